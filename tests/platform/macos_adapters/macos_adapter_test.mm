#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "alert.h"
#include "login_item.h"
#include "pasteboard.h"
#include "process_table.h"
#include "recording_fakes.h"
#include "running_application.h"
#include "second_start.h"
#include "status_item_macos.h"
#include "sysctl_string.h"
#include "system.h"
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
    EXPECT_EQ([button() imagePosition], NSImageLeft);
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

TEST_F(StatusItemTest, APressWhileAnAlertIsUpBringsTheAlertForward)
{
    int presses = 0;
    const StatusItem item([&presses](std::optional<ScreenPoint>) { ++presses; });
    recordedCalls.clear();
    fakeAlertIsUp = true;
    [button() performClick:nil];
    fakeAlertIsUp = false;
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(recordedCalls, std::vector<std::string>{"activate before all others"});
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
    const FakeBundle bundle;
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
    const FakeBundle bundle;
    const auto item = makeLoginItem({});
    fakeLoginItemSucceeds = true;
    EXPECT_EQ(item->registerItem(), "");
    EXPECT_EQ(item->unregisterItem(), "");
    fakeLoginItemSucceeds = false;
    EXPECT_EQ(item->registerItem(), "not permitted");
    EXPECT_EQ(item->unregisterItem(), "not permitted");
}

TEST(LoginItemTest, AProgramOutsideOfABundleIsRefusedWithoutAskingTheService)
{
    const FakeBundle none({.path = "/usr/local/bin", .identifier = std::nullopt});
    const auto item = makeLoginItem({});
    fakeLoginItemStatus = 1;
    fakeLoginItemSucceeds = true;
    recordedCalls.clear();
    EXPECT_EQ(item->status(), LoginItem::Status::notFound);
    EXPECT_EQ(item->registerItem(), "The program does not run from an application bundle.");
    EXPECT_EQ(item->unregisterItem(), "The program does not run from an application bundle.");
    EXPECT_EQ(recordedCalls, std::vector<std::string>());
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
    makeTrash({})("/Applications/A b.app", done);
    fakeTrashSucceeds = false;
    makeTrash({})("/Applications/A b.app", done);
    EXPECT_EQ(recordedCalls, (Calls{"recycle /Applications/A b.app", "recycle /Applications/A b.app"}));
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors.at(0), "");
    EXPECT_NE(errors.at(1).find("trash is full"), std::string::npos) << errors.at(1);
}

TEST_F(DesktopTest, AnEmptyPathNeverMovesTheCurrentFolder)
{
    for (const char* path : {"", "\xff"}) {
        std::string error;
        makeTrash({})(path, [&error](const std::string& reason) { error = reason; });
        EXPECT_EQ(error, "There is nothing to move.");
    }
    EXPECT_EQ(recordedCalls, Calls());
}

TEST_F(DesktopTest, AFrameworkThatCannotBeLoadedLeavesALineInTheLog)
{
    const FakeBundle bundle({.path = "/Applications/A b.app"});
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(startUpdaterBackend(), nullptr);
    const std::string log = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("Quenchly: Sparkle.framework cannot be loaded: signed by 100%d others\n"), std::string::npos)
        << log;
    EXPECT_EQ(recordedCalls, Calls{"bundle at /Applications/A b.app/Contents/Frameworks/Sparkle.framework"});
}

TEST_F(DesktopTest, TheUpdateFrameworkIsStartedWhereThereIsOne)
{
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

TEST(SystemTest, KnowsTheTextsOfItsBundle)
{
    const FakeBundle bundle({.info = {{"CFBundleShortVersionString", "1.4.2"}, {"SUFeedURL", "https://a/б.xml"}}});
    const System system = makeSystem();
    EXPECT_EQ(system.bundleInfo, (std::map<std::string, std::string>{{"CFBundleShortVersionString", "1.4.2"},
                                                                     {"SUFeedURL", "https://a/б.xml"}}));
    EXPECT_EQ(system.applicationItem, "/Applications/Some.app");
    EXPECT_EQ(system.executableFolder, "/Applications/Some.app/Contents/MacOS");
}

TEST(SystemTest, OutsideOfABundleTheProgramAloneCanGoToTheTrash)
{
    const FakeBundle none({.path = "/usr/local/bin", .identifier = std::nullopt});
    EXPECT_EQ(makeSystem().applicationItem, "/usr/local/bin/Contents/MacOS/Some");
}

TEST(SystemTest, ALogLineIsOneLineLetterForLetter)
{
    const System system = makeSystem();
    ::testing::internal::CaptureStderr();
    system.log("Quenchly Open at Login failed: 100% %n%@%s\n\x1b[31mQuenchly: forged");
    const std::string log = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find(" Quenchly Open at Login failed: 100% %n%@%s [31mQuenchly: forged\n"), std::string::npos) << log;
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
}

TEST(SystemTest, OpensAnAddressAndTellsWhetherThatWentWell)
{
    const System system = makeSystem();
    recordedCalls.clear();
    EXPECT_TRUE(system.openAddress("mailto:a@b.example?subject=A%20b&body=%0A"));
    fakeAddressOpens = false;
    EXPECT_FALSE(system.openAddress("http://127.0.0.1:8280"));
    fakeAddressOpens = true;
    EXPECT_EQ(recordedCalls, (Calls{"open mailto:a@b.example?subject=A%20b&body=%0A", "open http://127.0.0.1:8280"}));
}

TEST(SecondStartTest, OpensEachTimeFromWhenTheEventLoopRuns)
{
    int starts = 0;
    whenStartedAgain([&starts] { ++starts; });
    EXPECT_FALSE(startAgain());
    runWhatWasPutOff();
    EXPECT_TRUE(startAgain());
    EXPECT_TRUE(startAgain());
    EXPECT_EQ(starts, 2);
}

class ProcessTableTest : public testing::Test {
protected:
    void SetUp() override { recordedCalls.clear(); }

    std::unique_ptr<ProcessTable> table_ = makeProcessTable();
};

TEST_F(ProcessTableTest, AsksPgrepAndPsWithTheseArgumentsAndNoOthers)
{
    fakeToolOutput = ToolOutput{.exitStatus = 0, .standardOutput = "412\n7\n"};
    EXPECT_EQ(table_->named("ollama"), (std::vector<ProcessId>{7, 412}));
    EXPECT_EQ(table_->matching("LM Studio.app/Contents/MacOS/LM Studio --run-as-service").size(), 2U);
    fakeToolOutput = ToolOutput{.exitStatus = 1, .standardOutput = "    7 Ss+\n  412 T\n"};
    EXPECT_EQ(table_->states({7, 412, 90210}), (std::map<ProcessId, std::string>{{7, "Ss+"}, {412, "T"}}));
    EXPECT_EQ(recordedCalls, (Calls{"/usr/bin/pgrep|-x|ollama",
                                    "/usr/bin/pgrep|-f|LM Studio.app/Contents/MacOS/LM Studio --run-as-service",
                                    "/bin/ps|-o|pid=,stat=|-p|7,412,90210"}));
}

TEST_F(ProcessTableTest, OnlyAnExitStatusOfZeroFindsProcesses)
{
    for (const int status : {1, 2, 3, -1}) {
        fakeToolOutput = ToolOutput{.exitStatus = status, .standardOutput = "412\n"};
        table_->beginRefresh();
        EXPECT_TRUE(table_->named("ollama").empty()) << status;
    }
    fakeToolOutput = std::nullopt;
    table_->beginRefresh();
    EXPECT_TRUE(table_->matching("mlx_lm.server").empty());
    EXPECT_TRUE(table_->states({412}).empty());
}

TEST_F(ProcessTableTest, APatternThatLooksLikeAnOptionIsStillAPattern)
{
    fakeToolOutput = ToolOutput{.exitStatus = 1, .standardOutput = ""};
    table_->named("-u0");
    EXPECT_EQ(recordedCalls, Calls{"/usr/bin/pgrep|-x|--|-u0"});
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
