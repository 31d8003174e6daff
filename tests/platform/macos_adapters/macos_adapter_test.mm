#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "alert.h"
#include "login_item.h"
#include "pasteboard.h"
#include "recording_fakes.h"
#include "running_application.h"
#include "status_item_macos.h"
#include "sysctl_string.h"
#include "trash.h"
#include "updater_backend.h"
#include "user_defaults.h"

@interface NSStatusItem (Test)
- (NSStatusBarButton*)button;
@end

namespace quenchly {
namespace {

NSStatusBarButton* button()
{
    return [[[[NSStatusItem alloc] init] autorelease] button];
}

bool wasRecorded(const std::string& call)
{
    return std::ranges::find(recordedCalls, call) != recordedCalls.end();
}

std::string pngOfSize(int pixels)
{
    NSBitmapImageRep* bitmap = [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                        pixelsWide:pixels
                                                                        pixelsHigh:pixels
                                                                     bitsPerSample:8
                                                                   samplesPerPixel:4
                                                                          hasAlpha:YES
                                                                          isPlanar:NO
                                                                    colorSpaceName:NSCalibratedRGBColorSpace
                                                                       bytesPerRow:0
                                                                      bitsPerPixel:0] autorelease];
    NSData* file = [bitmap representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
    return std::string(static_cast<const char*>([file bytes]), [file length]);
}

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override { recordedCalls.clear(); }
};

TEST_F(StatusItemTest, IsANamedItemOfVariableLength)
{
    const StatusItem item([](auto) {});
    EXPECT_TRUE(wasRecorded("status item of length -1"));
    EXPECT_TRUE(wasRecorded("autosave name quenchly"));
    EXPECT_EQ([button() menu], nil);
}

TEST_F(StatusItemTest, APressWithoutAnEventIsAPress)
{
    int presses = 0;
    {
        const StatusItem item([&presses](std::optional<ScreenPoint>) { ++presses; });
        [button() performClick:nil];
        EXPECT_EQ(presses, 1);
    }
    EXPECT_TRUE(wasRecorded("status item removed"));
    [button() performClick:nil];
    EXPECT_EQ(presses, 1);
}

TEST_F(StatusItemTest, TellsItsBottomLeftCornerFromTheTopOfThePrimaryScreen)
{
    std::optional<ScreenPoint> corner;
    const StatusItem item([&corner](std::optional<ScreenPoint> point) { corner = point; });
    [button() performClick:nil];
    EXPECT_FALSE(corner.has_value());

    const CGFloat screenHeight = NSMaxY([[[NSScreen screens] objectAtIndex:0] frame]);
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(300, screenHeight - 24, 80, 24)
                                                   styleMask:NSBorderlessWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:YES];
    [[window contentView] addSubview:button()];
    [button() setFrameOrigin:NSMakePoint(10, 2)];
    [button() performClick:nil];
    ASSERT_TRUE(corner.has_value());
    EXPECT_EQ(corner->x, 310);
    EXPECT_EQ(corner->y, 22);
    [button() removeFromSuperview];
    [window release];
}

TEST_F(StatusItemTest, ShowsEveryResolutionOfTheImageAtOneSize)
{
    StatusItem item([](auto) {});
    item.setImage({.widthInPoints = 22, .heightInPoints = 22, .pngFiles = {pngOfSize(22), pngOfSize(44), "no image"}});
    NSImage* image = [button() image];
    EXPECT_EQ([image size].width, 22);
    ASSERT_EQ([[image representations] count], 2U);
    EXPECT_EQ([[[image representations] objectAtIndex:1] pixelsWide], 44);
    EXPECT_EQ([[[image representations] objectAtIndex:1] size].width, 22);
    EXPECT_TRUE(wasRecorded("coloured image"));
    EXPECT_FALSE(wasRecorded("template image"));
}

TEST_F(StatusItemTest, ShowsTextsInAnyScriptInTwoWeightsWithDigitsOfEqualWidth)
{
    StatusItem item([](auto) {});
    item.setTitle({.bold = "保護オン", .semibold = "  4.2 / 8 · 2.1G"});
    EXPECT_STREQ([[[button() attributedTitle] string] UTF8String], "保護オン  4.2 / 8 · 2.1G");
    EXPECT_TRUE(wasRecorded("digits of equal width, 13 points, weight 0.4"));
    EXPECT_TRUE(wasRecorded("digits of equal width, 13 points, weight 0.3"));
    NSRange range;
    const NSUInteger inTheFigures = 6;
    EXPECT_NE([[button() attributedTitle] attribute:NSForegroundColorAttributeName
                                            atIndex:inTheFigures
                                     effectiveRange:&range],
              nil);
    item.setTitle({.bold = "\xff", .semibold = ""});
    EXPECT_STREQ([[[button() attributedTitle] string] UTF8String], "");
    item.setAccessibilityLabel("On");
    EXPECT_TRUE(wasRecorded("accessibility label On"));
}

TEST(LoginItemTest, EachStatusOfTheService)
{
    const auto item = makeLoginItem({});
    const std::pair<long, LoginItem::Status> cases[] = {{0, LoginItem::Status::notRegistered},
                                                        {1, LoginItem::Status::enabled},
                                                        {2, LoginItem::Status::requiresApproval},
                                                        {3, LoginItem::Status::notFound},
                                                        {99, LoginItem::Status::notFound}};
    for (const auto& [raw, status] : cases) {
        fakeLoginItemStatus = raw;
        EXPECT_EQ(item->status(), status) << raw;
    }
}

TEST(LoginItemTest, SuccessIsAnEmptyTextAndFailureItsReason)
{
    const auto item = makeLoginItem({});
    fakeLoginItemSucceeds = true;
    EXPECT_EQ(item->registerItem(), "");
    EXPECT_EQ(item->unregisterItem(), "");
    fakeLoginItemSucceeds = false;
    EXPECT_EQ(item->registerItem(), "not permitted");
    EXPECT_EQ(item->unregisterItem(), "not permitted");
}

TEST(LoginItemTest, ApprovalIsGivenInTheSystemsSettings)
{
    recordedCalls.clear();
    makeLoginItem({})->requestApproval();
    EXPECT_EQ(recordedCalls, std::vector<std::string>{"open the settings of login items"});
}

TEST(UserDefaultsTest, AKeyIsThereWhateverItsValue)
{
    const auto defaults = makeUserDefaults("");
    const std::string key = "quenchly.openAtLogin.didApplyDefault";
    [[NSUserDefaults standardUserDefaults] removeObjectForKey:@"quenchly.openAtLogin.didApplyDefault"];
    EXPECT_FALSE(defaults->contains(key));
    defaults->setBool(key, false);
    EXPECT_TRUE(defaults->contains(key));
}

using Calls = std::vector<std::string>;

class DesktopTest : public testing::Test {
protected:
    void SetUp() override { recordedCalls.clear(); }
};

TEST_F(DesktopTest, AnAlertShowsItsTextsAndItsButtonsInOrder)
{
    fakeAnswer = 2;
    EXPECT_EQ(runAlert({.title = "Title <b>", .text = "100% テキスト", .buttons = {"One", "Two", "Three"}}), 2U);
    EXPECT_EQ(recordedCalls,
              (Calls{"informational alert", "Title <b>", "100% テキスト", "button One", "button Two", "button Three"}));
}

TEST_F(DesktopTest, AnAlertThatWasClosedOtherwiseHasNoAnswer)
{
    for (const long answer : {-1001L, -1L, 1L, 5L}) {
        fakeAnswer = answer;
        EXPECT_EQ(runAlert({.title = "t", .text = "x", .buttons = {"OK"}}), std::nullopt) << answer;
    }
    fakeAnswer = 0;
    EXPECT_EQ(runAlert({.title = "t", .text = "x", .buttons = {"OK"}}), 0U);
}

TEST_F(DesktopTest, TheTextReplacesWhatWasCopied)
{
    copyToPasteboard("To: a\n\nб");
    ASSERT_EQ(recordedCalls.size(), 2U);
    EXPECT_EQ(recordedCalls.at(0), "pasteboard cleared");
    EXPECT_EQ(recordedCalls.at(1), std::string([NSPasteboardTypeString UTF8String]) + ": To: a\n\nб");
}

TEST_F(DesktopTest, TheProgramBecomesRegularAndAccessoryAndEndsFromItsRunLoop)
{
    const auto application = makeRunningApplication();
    application->setActivationPolicy(ActivationPolicy::regular);
    application->activate();
    application->setActivationPolicy(ActivationPolicy::accessory);
    application->terminate();
    const Calls before{"regular", "activate before all others", "accessory"};
    EXPECT_EQ(recordedCalls, before);
    while (recordedCalls == before)
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:1]];
    EXPECT_EQ(recordedCalls.back(), "terminate (null)");
}

TEST_F(DesktopTest, TheTrashTellsItsFailure)
{
    Calls errors;
    const auto done = [&errors](const std::string& error) { errors.push_back(error); };
    fakeTrashSucceeds = true;
    moveToTrash("/Applications/A b.app", done);
    fakeTrashSucceeds = false;
    moveToTrash("/Applications/A b.app", done);
    EXPECT_EQ(recordedCalls, (Calls{"recycle /Applications/A b.app", "recycle /Applications/A b.app"}));
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors.at(0), "");
    EXPECT_NE(errors.at(1).find("trash is full"), std::string::npos) << errors.at(1);
}

TEST_F(DesktopTest, TheUpdateFrameworkIsStartedWhereThereIsOne)
{
    EXPECT_EQ(startUpdaterBackend(), nullptr);
    offerUpdateFramework();
    auto updater = startUpdaterBackend();
    ASSERT_NE(updater, nullptr);
    updater->setAutomaticallyDownloadsUpdates(false);
    updater->setAutomaticallyChecksForUpdates(true);
    updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_TRUE(updater->automaticallyChecksForUpdates());
    updater->checkForUpdates();
    updater.reset();
    EXPECT_EQ(recordedCalls, (Calls{"updater started", "automatic downloads off", "automatic checks on",
                                    "automatic checks off", "check for updates", "updater released"}));
}

TEST(SysctlStringTest, ReadsATextOrTellsThatItCannot)
{
    fakeHardwareModel = "Mac14,9";
    EXPECT_EQ(sysctlString("hw.model"), "Mac14,9");
    EXPECT_EQ(sysctlString("hw.other"), std::nullopt);
    fakeHardwareModel = "";
    EXPECT_EQ(sysctlString("hw.model"), "");
    fakeHardwareModel = nullptr;
    EXPECT_EQ(sysctlString("hw.model"), std::nullopt);
}

}  // namespace
}  // namespace quenchly

int main(int argc, char** argv)
{
    @autoreleasepool {
        testing::InitGoogleTest(&argc, argv);
        [NSApplication sharedApplication];
        return RUN_ALL_TESTS();
    }
}
