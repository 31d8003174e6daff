#include "support_contact.h"

#include <gtest/gtest.h>

#include "product.h"
#include "scripted_system.h"
#include "shown_language.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

using Events = std::vector<std::string>;

const std::string address = Product::supportAddress;
const std::string page = std::string("https://") + Product::vendorHost + "/quenchly/support.html";

TEST(SupportReportTest, TheDraftHoldsTheVersionTheModelAndAPlaceToWrite)
{
    const auto draft = SupportContact::reportDraft({.version = "1.4.2", .macModel = "MacBookPro18,3"});
    EXPECT_EQ(draft.subject, "Quenchly 1.4.2 problem");
    EXPECT_EQ(draft.body, "Version: 1.4.2\nMac: MacBookPro18,3\n\nWhat went wrong:\n");
    EXPECT_EQ(draft.clipboard,
              "To: " + address +
                  "\nSubject: Quenchly 1.4.2 problem\n\nVersion: 1.4.2\nMac: MacBookPro18,3\n\nWhat went wrong:\n");
}

TEST(SupportReportTest, ThePageIsToldTheTrimmedVersionAndTheDraftKeepsItAsItIs)
{
    const std::string version = " 1.4.2\n";
    EXPECT_EQ(SupportContact::supportPageURL(version), page + "?v=1.4.2");
    EXPECT_EQ(SupportContact::supportPageURL("\xc2\xa0\xe3\x80\x80"
                                             "1.4.2\xe2\x80\xa8"),
              page + "?v=1.4.2");
    const auto draft = SupportContact::reportDraft({.version = version, .macModel = "Mac"});
    EXPECT_EQ(draft.subject, "Quenchly  1.4.2\n problem");
    EXPECT_EQ(draft.body, "Version:  1.4.2\n\nMac: Mac\n\nWhat went wrong:\n");
}

TEST(SupportReportTest, ThePageIsToldNoUnknownVersion)
{
    for (const char* version : {"", "?", " ? ", " \t\r\n "})
        EXPECT_EQ(SupportContact::supportPageURL(version), page) << version;
    EXPECT_EQ(SupportContact::supportPageURL("1.0?"), page + "?v=1.0?");
}

TEST(SupportReportTest, NothingInAVersionEndsTheQueryItem)
{
    EXPECT_EQ(SupportContact::supportPageURL("1&x=2#3%41+β/2"), page + "?v=1%26x%3D2%233%2541+%CE%B2/2");
}

class ReportProblemTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    System system = world.system();

    ReportProblemTest()
    {
        system.openAddress = [this](const std::string& opened) {
            world.desktop.events.push_back("open " + opened);
            return true;
        };
        system.bundleInfo = {{"CFBundleShortVersionString", "1.4.2"}};
        system.sysctlString = [](const std::string& name) {
            return name == "hw.model" ? std::optional<std::string>("Mac14,9") : std::nullopt;
        };
    }

    Events eventsAfter(std::optional<std::size_t> answer)
    {
        StateWatcher watcher(system);
        world.desktop.answers = {answer};
        watcher.openReportProblem();
        return world.desktop.events;
    }

    static Events expected(const std::vector<std::string>& opened)
    {
        Events events{"copy " + SupportContact::reportDraft({.version = "1.4.2", .macModel = "Mac14,9"}).clipboard,
                      "regular", "activate", "alert Support email copied"};
        events.insert(events.end(), opened.begin(), opened.end());
        events.push_back("accessory");
        return events;
    }
};

TEST_F(ReportProblemTest, OkLeavesTheDraftOnTheClipboard)
{
    EXPECT_EQ(eventsAfter(0), expected({}));
    const Alert alert{.title = "Support email copied",
                      .text = "A draft for " + address +
                              " is on your clipboard. Paste into webmail, or open the support form and send from the "
                              "browser.",
                      .buttons = {"OK", "Open support form", "Try Mail"}};
    EXPECT_EQ(world.desktop.alerts, std::vector<Alert>{alert});
}

TEST_F(ReportProblemTest, TheAlertSpeaksTheLanguageInForceAndTheDraftTheSupports)
{
    const std::string draft =
        "copy " + SupportContact::reportDraft({.version = "1.4.2", .macModel = "Mac14,9"}).clipboard;
    for (const AppLanguage language : testing::allLanguages) {
        L10n::testingLanguage = language;
        world.desktop.alerts.clear();
        world.desktop.events.clear();
        EXPECT_EQ(eventsAfter(0).front(), draft);
        EXPECT_EQ(world.desktop.alerts.front(),
                  (Alert{.title = L10n::t("support_email_copied"),
                         .text = L10n::tf("support_email_copied_text", {address}),
                         .buttons = {L10n::t("ok"), L10n::t("open_support_form"), L10n::t("try_mail")}}));
    }
    L10n::testingLanguage.reset();
}

TEST_F(ReportProblemTest, ADismissedAlertIsAsGoodAsOk)
{
    EXPECT_EQ(eventsAfter(std::nullopt), expected({}));
}

TEST_F(ReportProblemTest, TheSecondButtonOpensTheForm)
{
    EXPECT_EQ(eventsAfter(1), expected({"open " + page + "?v=1.4.2"}));
}

TEST_F(ReportProblemTest, TheThirdButtonOpensAMailOfVersionAndModelAlone)
{
    EXPECT_EQ(eventsAfter(2), expected({"open mailto:" + address +
                                        "?subject=Quenchly%201.4.2%20problem&body=Version:%201.4.2%0AMac:%20Mac14,9%0A"
                                        "%0AWhat%20went%20wrong:%0A"}));
}

TEST_F(ReportProblemTest, WhatCannotBeReadIsReplaced)
{
    system.bundleInfo.clear();
    system.sysctlString = [](const std::string&) { return std::nullopt; };
    eventsAfter(1);
    EXPECT_EQ(world.desktop.events.front(),
              "copy " + SupportContact::reportDraft({.version = "?", .macModel = "Mac"}).clipboard);
    EXPECT_EQ(world.desktop.events.at(4), "open " + page);
}

TEST_F(ReportProblemTest, AnEmptyModelStaysEmpty)
{
    system.sysctlString = [](const std::string&) { return std::string(); };
    EXPECT_EQ(eventsAfter(0).front(),
              "copy " + SupportContact::reportDraft({.version = "1.4.2", .macModel = ""}).clipboard);
}

}  // namespace
}  // namespace quenchly
