#import <Foundation/Foundation.h>

#include "cocoa_support.h"
#include "updater_backend.h"

// Of the Sparkle framework, declared here so that the program is built, and runs, without it.
@protocol QuenchlySparkleUpdater <NSObject>
- (BOOL)automaticallyChecksForUpdates;
- (void)setAutomaticallyChecksForUpdates:(BOOL)enabled;
- (void)setAutomaticallyDownloadsUpdates:(BOOL)enabled;
@end

@protocol QuenchlySparkleController <NSObject>
+ (id)alloc;
- (id)initWithStartingUpdater:(BOOL)start updaterDelegate:(id)delegate userDriverDelegate:(id)driverDelegate;
- (id<QuenchlySparkleUpdater>)updater;
- (void)checkForUpdates:(id)sender;
@end

namespace quenchly {
namespace {

NSString* const frameworkName = @"Sparkle.framework";

Class controllerClass()
{
    return NSClassFromString(@"SPUStandardUpdaterController");
}

void loadFramework()
{
    NSString* folder = [[NSBundle mainBundle] privateFrameworksPath];
    NSBundle* framework = [NSBundle bundleWithPath:[folder stringByAppendingPathComponent:frameworkName]];
    NSError* error = nil;
    if (framework != nil && ![framework loadAndReturnError:&error])
        NSLog(@"Quenchly: %@ cannot be loaded: %@", frameworkName, [error localizedDescription]);
}

class SparkleBackend final : public UpdaterBackend {
public:
    explicit SparkleBackend(Class<QuenchlySparkleController> controller)
        : controller_([[controller alloc] initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil])
    {
    }
    ~SparkleBackend() override { QUENCHLY_RELEASE(controller_); }
    SparkleBackend(const SparkleBackend&) = delete;
    SparkleBackend& operator=(const SparkleBackend&) = delete;

    bool automaticallyChecksForUpdates() const override
    {
        @autoreleasepool {
            return [[controller_ updater] automaticallyChecksForUpdates];
        }
    }
    void setAutomaticallyChecksForUpdates(bool enabled) override
    {
        @autoreleasepool {
            [[controller_ updater] setAutomaticallyChecksForUpdates:enabled];
        }
    }
    void setAutomaticallyDownloadsUpdates(bool enabled) override
    {
        @autoreleasepool {
            [[controller_ updater] setAutomaticallyDownloadsUpdates:enabled];
        }
    }
    void checkForUpdates() override
    {
        @autoreleasepool {
            [controller_ checkForUpdates:nil];
        }
    }

private:
    id<QuenchlySparkleController> controller_;
};

}  // namespace

std::unique_ptr<UpdaterBackend> startUpdaterBackend()
{
    @autoreleasepool {
        if (controllerClass() == Nil)
            loadFramework();
        const Class controller = controllerClass();
        return controller != Nil ? std::make_unique<SparkleBackend>(controller) : nullptr;
    }
}

}  // namespace quenchly
