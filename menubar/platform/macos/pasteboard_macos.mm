#import <AppKit/AppKit.h>

#include "cocoa_support.h"
#include "pasteboard.h"

namespace quenchly {

void copyToPasteboard(const std::string& text)
{
    @autoreleasepool {
        NSPasteboard* pasteboard = [NSPasteboard generalPasteboard];
        [pasteboard clearContents];
        [pasteboard setString:nsString(text) forType:NSPasteboardTypeString];
    }
}

}  // namespace quenchly
