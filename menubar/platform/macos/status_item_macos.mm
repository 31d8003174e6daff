#import <AppKit/AppKit.h>

#include <utility>

#include "cocoa_support.h"
#include "status_item_macos.h"

namespace quenchly {
namespace {

constexpr CGFloat labelFontSize = 13;

std::optional<ScreenPoint> bottomLeft(NSView* view)
{
    NSWindow* window = [view window];
    NSScreen* primaryScreen = [[NSScreen screens] firstObject];
    if (window == nil || primaryScreen == nil)
        return std::nullopt;
    const NSRect onScreen = [window convertRectToScreen:[view convertRect:[view bounds] toView:nil]];
    return ScreenPoint{.x = NSMinX(onScreen), .y = NSMaxY([primaryScreen frame]) - NSMinY(onScreen)};
}

// Digits of equal width keep the item from jumping. Without a colour of its own an attributed title is black on every
// bar; this one follows the bar's appearance.
void append(NSMutableAttributedString* text, const std::string& part, CGFloat weight)
{
    NSDictionary* attributes = @{
        NSFontAttributeName : [NSFont monospacedDigitSystemFontOfSize:labelFontSize weight:weight],
        NSForegroundColorAttributeName : [NSColor controlTextColor],
    };
    NSAttributedString* styled = [[NSAttributedString alloc] initWithString:nsString(part) attributes:attributes];
    [text appendAttributedString:styled];
    QUENCHLY_RELEASE(styled);
}

}  // namespace
}  // namespace quenchly

@interface QuenchlyStatusItemTarget : NSObject {
@public
    std::function<void(std::optional<quenchly::ScreenPoint>)> quenchlyHandler;
}
- (void)quenchlyItemPressed:(id)sender;
@end

@implementation QuenchlyStatusItemTarget
// The current event is never consulted: an activation through accessibility has none.
- (void)quenchlyItemPressed:(id)sender
{
    // An alert takes all input until it is answered; a panel beside it would be dead.
    NSApplication* application = [NSApplication sharedApplication];
    if ([application modalWindow] != nil)
        [application activateIgnoringOtherApps:YES];
    else if (quenchlyHandler)
        quenchlyHandler(quenchly::bottomLeft(sender));
}
@end

namespace quenchly {

struct StatusItem::Native {
    NSStatusItem* item = nil;
    QuenchlyStatusItemTarget* target = nil;
};

StatusItem::StatusItem(std::function<void(std::optional<ScreenPoint>)> pressed) : native_(std::make_unique<Native>())
{
    @autoreleasepool {
        native_->target = [[QuenchlyStatusItemTarget alloc] init];
        native_->target->quenchlyHandler = std::move(pressed);
        native_->item =
            QUENCHLY_RETAIN([[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength]);
        [native_->item setAutosaveName:@"quenchly"];
        NSStatusBarButton* button = [native_->item button];
        [button setImagePosition:NSImageLeft];
        [button setTarget:native_->target];
        [button setAction:@selector(quenchlyItemPressed:)];
    }
}

StatusItem::~StatusItem()
{
    @autoreleasepool {
        [[native_->item button] setTarget:nil];
        native_->target->quenchlyHandler = nullptr;
        [[NSStatusBar systemStatusBar] removeStatusItem:native_->item];
        QUENCHLY_RELEASE(native_->item);
        QUENCHLY_RELEASE(native_->target);
    }
}

void StatusItem::setImage(const StatusItemImage& image)
{
    @autoreleasepool {
        const NSSize size = NSMakeSize(image.widthInPoints, image.heightInPoints);
        NSImage* native = [[NSImage alloc] initWithSize:size];
        for (const std::string& png : image.pngFiles) {
            NSData* data = [NSData dataWithBytes:png.data() length:png.size()];
            NSBitmapImageRep* representation = [[NSBitmapImageRep alloc] initWithData:data];
            if (representation == nil)
                continue;
            [representation setSize:size];
            [native addRepresentation:representation];
            QUENCHLY_RELEASE(representation);
        }
        [native setTemplate:NO];
        [[native_->item button] setImage:native];
        QUENCHLY_RELEASE(native);
    }
}

void StatusItem::setTitle(const StatusItemTitle& title)
{
    @autoreleasepool {
        NSMutableAttributedString* text = [[NSMutableAttributedString alloc] init];
        append(text, title.bold, NSFontWeightBold);
        append(text, title.semibold, NSFontWeightSemibold);
        [[native_->item button] setAttributedTitle:text];
        QUENCHLY_RELEASE(text);
    }
}

void StatusItem::setToolTip(const std::string& toolTip)
{
    @autoreleasepool {
        [[native_->item button] setToolTip:nsString(toolTip)];
    }
}

void StatusItem::setAccessibilityLabel(const std::string& label)
{
    @autoreleasepool {
        [[native_->item button] setAccessibilityLabel:nsString(label)];
    }
}

}  // namespace quenchly
