#import <Foundation/Foundation.h>

#include "cocoa_support.h"
#include "user_defaults.h"

namespace quenchly {
namespace {

class UserDefaultsMacos final : public UserDefaults {
public:
    bool contains(const std::string& key) const override
    {
        @autoreleasepool {
            return [[NSUserDefaults standardUserDefaults] objectForKey:nsString(key)] != nil;
        }
    }

    void setBool(const std::string& key, bool value) override
    {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] setBool:value forKey:nsString(key)];
        }
    }
};

}  // namespace

std::unique_ptr<UserDefaults> makeUserDefaults(const std::filesystem::path&)
{
    return std::make_unique<UserDefaultsMacos>();
}

}  // namespace quenchly
