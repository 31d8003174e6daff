#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "help_copy.h"
#include "menu_content.h"
#include "menu_content_fixture.h"

namespace quenchly {
namespace {

using testing::allLanguages;
using testing::MenuContentTest;
using testing::setAsideProcess;

/// A text of the panel; which words a key has in a language is the tables' own matter.
class MenuContentLanguages : public MenuContentTest {
protected:
    using Content = const MenuContent&;
    using Place = std::string (*)(Content);

    void expectTexts(const std::vector<std::pair<std::string_view, Place>>& texts, std::int64_t count = 0) const
    {
        for (const AppLanguage language : allLanguages) {
            L10n::testingLanguage = language;
            const MenuContent shown = content();
            for (const auto& [key, place] : texts)
                EXPECT_EQ(place(shown), L10n::tf(key, {count})) << key << " in " << rawValue(language);
        }
    }
};

TEST_F(MenuContentLanguages, ProtectionAndItsRow)
{
    const Place lockup = [](Content shown) { return shown.header.lockup; };
    const Place row = [](Content shown) { return shown.actions[0][0].label; };
    const Place trailing = [](Content shown) { return shown.actions[0][0].trailing; };
    expectTexts({{"protection_on", lockup}, {"protection_on", row}, {"turn_off", trailing}});
    protectionOff();
    expectTexts({{"protection_off", lockup}, {"protection_off", row}, {"turn_on", trailing}});
    notSetUp();
    expectTexts({{"checks_not_set_up", lockup}, {"start_background_checks", row}, {"install", trailing}});
}

TEST_F(MenuContentLanguages, TheLastCheck)
{
    const Place line = [](Content shown) { return shown.header.lastCheck; };
    status.lastCheckISO.reset();
    expectTexts({{"checking_in_a_moment", line}});
    situation.checkInFlight = true;
    expectTexts({{"checking_now", line}});
}

TEST_F(MenuContentLanguages, TheSetAsideSection)
{
    status.quarantine.assign(12, setAsideProcess("1"));
    expectTexts({{"set_aside_heading", [](Content shown) { return shown.setAside->heading; }},
                 {"clear_all_n", [](Content shown) { return shown.setAside->clearAll; }},
                 {"only_listed_ai", [](Content shown) { return shown.setAside->footnote; }}},
                12);
    const Place button = [](Content shown) { return shown.setAside->acknowledge; };
    expectTexts({{"acknowledge", button}});
    situation.ackBusy = true;
    expectTexts({{"acknowledging", button}});
}

TEST_F(MenuContentLanguages, TheSettings)
{
    const Place login = [](Content shown) { return shown.actions[1][0].label; };
    const Place updates = [](Content shown) { return shown.actions[1][1].label; };
    const Place trailing = [](Content shown) { return shown.actions[1][0].trailing; };
    expectTexts({{"open_at_login_off", login}, {"turn_on", trailing}, {"auto_updates_off", updates}});
    situation.openAtLogin = situation.automaticChecksEnabled = true;
    expectTexts({{"open_at_login_on", login}, {"turn_off", trailing}, {"auto_updates_on", updates}});
}

TEST_F(MenuContentLanguages, WhyActionsAreGrey)
{
    status.quarantine = {setAsideProcess("1")};
    situation.toolAvailability = ToolAvailability::toolNotFound;
    expectTexts({{"needs_tool", [](Content shown) { return shown.actions[0][0].reason; }},
                 {"needs_tool", [](Content shown) { return shown.setAside->reason; }}});
}

TEST_F(MenuContentLanguages, TheRemainingTexts)
{
    status.memoryReliefTip = "Unload something.";
    situation.updaterConfigured = false;
    expectTexts({{"protection_applies_to", [](Content shown) { return shown.targets.heading; }},
                 {"protection_targets", [](Content shown) { return shown.targets.note; }},
                 {"unload_listed_ai", [](Content shown) { return shown.actions[0][1].label; }},
                 {"live_data", [](Content shown) { return shown.actions[2][0].label; }},
                 {"check_for_updates", [](Content shown) { return shown.actions[3][0].label; }},
                 {"report_problem", [](Content shown) { return shown.actions[4][0].label; }},
                 {"uninstall", [](Content shown) { return shown.actions[5][0].label; }},
                 {"quit", [](Content shown) { return shown.actions[6][0].label; }},
                 {"updates_not_configured", [](Content shown) { return shown.footer.updates; }}});
}

TEST_F(MenuContentTest, EveryHelpIsInTheLanguageInForce)
{
    status.memoryReliefTip = "Unload something.";
    status.quarantine = {setAsideProcess("1"), setAsideProcess("2")};
    const std::vector<std::string_view> keys{"help_protection_on",  "help_unload_listed_ai", "help_open_at_login",
                                             "help_auto_updates",   "help_live_data",        "help_check_for_updates",
                                             "help_report_problem", "help_uninstall",        "help_quit"};
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        const MenuContent shown = content();
        std::vector<std::string> helps;
        for (const std::vector<MenuContent::Row>& group : shown.actions)
            for (const MenuContent::Row& row : group)
                helps.push_back(row.help);
        ASSERT_EQ(helps.size(), keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i)
            EXPECT_EQ(helps[i], MenuHelpCopy::paragraph(keys[i]));
        EXPECT_EQ(shown.header.lockupHelp, MenuHelpCopy::paragraph("help_protection_on"));
        EXPECT_EQ(shown.targets.help, MenuHelpCopy::paragraph("help_protection_applies_to"));
        EXPECT_EQ(shown.setAside->help, MenuHelpCopy::paragraph("help_set_aside"));
        EXPECT_EQ(shown.setAside->acknowledgeHelp, MenuHelpCopy::paragraph("help_acknowledge"));
        EXPECT_EQ(shown.setAside->clearAllHelp, MenuHelpCopy::paragraph("help_clear_all_aside"));
    }
}

TEST_F(MenuContentTest, StatesAgesAndStoriesStayEnglish)
{
    status.quarantine = {setAsideProcess("1")};
    for (const AppLanguage language : allLanguages) {
        SCOPED_TRACE(rawValue(language));
        L10n::testingLanguage = language;
        const MenuContent shown = content();
        EXPECT_EQ(shown.targets.rows[0].detail, "Idle");
        EXPECT_EQ(shown.setAside->entries[0].age, "2m 5s ago");
        EXPECT_EQ(shown.targets.honesty, "No listed AI is open. Other AI is not eased.");
    }
}

}  // namespace
}  // namespace quenchly
