#import <AppKit/AppKit.h>

#include "running_application.h"

namespace quenchly {
namespace {

class RunningApplicationMacos final : public RunningApplication {
public:
    void setActivationPolicy(ActivationPolicy policy) override
    {
        [[NSApplication sharedApplication] setActivationPolicy:policy == ActivationPolicy::regular
                                                                   ? NSApplicationActivationPolicyRegular
                                                                   : NSApplicationActivationPolicyAccessory];
    }

    void activate() override { [[NSApplication sharedApplication] activateIgnoringOtherApps:YES]; }

    void terminate() override
    {
        @autoreleasepool {
            [[NSApplication sharedApplication] performSelectorOnMainThread:@selector(terminate:)
                                                                withObject:nil
                                                             waitUntilDone:NO];
        }
    }
};

}  // namespace

std::unique_ptr<RunningApplication> makeRunningApplication()
{
    return std::make_unique<RunningApplicationMacos>();
}

}  // namespace quenchly
