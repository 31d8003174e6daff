#import <AppKit/AppKit.h>

#include "alert.h"
#include "cocoa_support.h"

namespace quenchly {

std::optional<std::size_t> runAlert(const Alert& content)
{
    @autoreleasepool {
        NSAlert* alert = [[NSAlert alloc] init];
        [alert setAlertStyle:NSAlertStyleInformational];
        [alert setMessageText:nsString(content.title)];
        [alert setInformativeText:nsString(content.text)];
        for (const std::string& button : content.buttons)
            [alert addButtonWithTitle:nsString(button)];
        const NSInteger place = [alert runModal] - NSAlertFirstButtonReturn;
        QUENCHLY_RELEASE(alert);
        const auto buttons = static_cast<NSInteger>(content.buttons.size());
        return place >= 0 && place < buttons ? std::optional<std::size_t>(place) : std::nullopt;
    }
}

}  // namespace quenchly
