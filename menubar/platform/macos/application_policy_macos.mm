#import <AppKit/AppKit.h>

#include "application_policy.h"

namespace quenchly {

void becomeMenuBarApplication()
{
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

}  // namespace quenchly
