#import <Foundation/Foundation.h>

#include "cocoa_support.h"
#include "login_item.h"

// Of the ServiceManagement framework, declared here so that no header of it is needed.
@protocol QuenchlyAppService <NSObject>
+ (id<QuenchlyAppService>)mainAppService;
- (NSInteger)status;
- (BOOL)registerAndReturnError:(NSError**)error;
- (BOOL)unregisterAndReturnError:(NSError**)error;
+ (void)openSystemSettingsLoginItems;
@end

namespace quenchly {
namespace {

/// nil for a program that is in no bundle: the system starts bundles at login, and nothing else.
id<QuenchlyAppService> mainAppService()
{
    if ([[NSBundle mainBundle] bundleIdentifier] == nil)
        return nil;
    const Class<QuenchlyAppService> service = NSClassFromString(@"SMAppService");
    return [service mainAppService];
}

std::string reason(NSError* error)
{
    if (mainAppService() == nil)
        return "The program does not run from an application bundle.";
    const std::string text = utf8Text([error localizedDescription]);
    return text.empty() ? "The login items service gave no reason." : text;
}

class LoginItemMacos final : public LoginItem {
public:
    Status status() const override
    {
        @autoreleasepool {
            const id<QuenchlyAppService> service = mainAppService();
            if (service == nil)
                return Status::notFound;
            switch ([service status]) {
                case 0:
                    return Status::notRegistered;
                case 1:
                    return Status::enabled;
                case 2:
                    return Status::requiresApproval;
                default:
                    return Status::notFound;
            }
        }
    }

    std::string registerItem() override
    {
        @autoreleasepool {
            NSError* error = nil;
            return [mainAppService() registerAndReturnError:&error] ? std::string() : reason(error);
        }
    }

    std::string unregisterItem() override
    {
        @autoreleasepool {
            NSError* error = nil;
            return [mainAppService() unregisterAndReturnError:&error] ? std::string() : reason(error);
        }
    }

    void requestApproval() override
    {
        @autoreleasepool {
            const Class<QuenchlyAppService> service = NSClassFromString(@"SMAppService");
            [service openSystemSettingsLoginItems];
        }
    }
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItem(const LoginItemPlaces&)
{
    return std::make_unique<LoginItemMacos>();
}

}  // namespace quenchly
