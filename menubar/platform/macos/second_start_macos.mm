#import <AppKit/AppKit.h>

#include <cstdint>

#include "run_later.h"
#include "second_start.h"

@interface QuenchlyReopenHandler : NSObject {
@public
    std::function<void()> quenchlyTask;
}
- (void)quenchlyHandle:(NSAppleEventDescriptor*)event reply:(NSAppleEventDescriptor*)reply;
@end

@implementation QuenchlyReopenHandler
- (void)quenchlyHandle:(NSAppleEventDescriptor*)event reply:(NSAppleEventDescriptor*)reply
{
    (void)event;
    (void)reply;
    quenchlyTask();
}
@end

namespace quenchly {

void whenStartedAgain(const std::function<void()>& task)
{
    static QuenchlyReopenHandler* const handler = [[QuenchlyReopenHandler alloc] init];
    handler->quenchlyTask = task;
    // Once the event loop runs: while it starts, AppKit puts a handler of its own in place.
    runLater(std::chrono::milliseconds(0), [] {
        @autoreleasepool {
            constexpr std::uint32_t coreSuite = 'aevt';
            constexpr std::uint32_t reopen = 'rapp';
            [[NSAppleEventManager sharedAppleEventManager] setEventHandler:handler
                                                               andSelector:@selector(quenchlyHandle:reply:)
                                                             forEventClass:coreSuite
                                                                andEventID:reopen];
        }
    });
}

}  // namespace quenchly
