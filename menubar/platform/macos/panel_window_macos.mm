#import <AppKit/AppKit.h>

#include "panel_window.h"

namespace quenchly {

void becomePanelWindow(QWindow& window)
{
    @autoreleasepool {
        NSWindow* native = [(__bridge NSView*)reinterpret_cast<void*>(window.winId()) window];
        // Qt makes an NSPanel of a tool window; others have no such style.
        if (![native isKindOfClass:[NSPanel class]])
            return;
        NSPanel* panel = static_cast<NSPanel*>(native);
        [panel setStyleMask:[panel styleMask] | NSWindowStyleMaskNonactivatingPanel];
        NSWindowCollectionBehavior behavior = NSWindowCollectionBehaviorMoveToActiveSpace;
        behavior |= NSWindowCollectionBehaviorFullScreenAuxiliary;
        [panel setCollectionBehavior:behavior];
        [panel setLevel:NSPopUpMenuWindowLevel];
        [panel setHidesOnDeactivate:NO];
        [panel setBecomesKeyOnlyIfNeeded:NO];
    }
}

}  // namespace quenchly
