#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "help_copy.h"
#include "menu_content.h"
#include "menu_content_fixture.h"

namespace quenchly {
namespace {

using testing::MenuContentTest;

using Row = MenuContent::Row;
using Groups = std::vector<std::vector<MenuAction>>;

Groups actions(const MenuContent& content)
{
    Groups groups;
    for (const std::vector<Row>& group : content.actions) {
        groups.emplace_back();
        for (const Row& row : group)
            groups.back().push_back(row.action);
    }
    return groups;
}

std::optional<Row> row(const MenuContent& content, MenuAction action)
{
    for (const std::vector<Row>& group : content.actions)
        for (const Row& row : group)
            if (row.action == action)
                return row;
    return std::nullopt;
}

Row enabledRow(MenuAction action, const char* label, const char* trailing, const char* helpKey)
{
    return {.action = action,
            .label = label,
            .trailing = trailing,
            .help = MenuHelpCopy::paragraph(helpKey),
            .enabled = true};
}

TEST_F(MenuContentTest, TheActionsStandInTheirOrderWithADividerBetweenTheGroups)
{
    using enum MenuAction;
    EXPECT_EQ(actions(content()), (Groups{{protectOff},
                                          {openAtLoginOn, automaticChecksOn},
                                          {liveData},
                                          {checkForUpdates},
                                          {reportProblem},
                                          {uninstall},
                                          {quit}}));
    swapCriticalWithLiveAi();
    notSetUp();
    situation.updaterConfigured = false;
    EXPECT_EQ(actions(content()), (Groups{{installAgent, unloadListed},
                                          {openAtLoginOn},
                                          {liveData},
                                          {checkForUpdates},
                                          {reportProblem},
                                          {uninstall},
                                          {quit}}));
}

TEST_F(MenuContentTest, WithoutTheCheckerItsStartReplacesTheProtectionRow)
{
    notSetUp();
    const Row start =
        enabledRow(MenuAction::installAgent, "Start background checks", "Install", "help_start_background_checks");
    EXPECT_EQ(content().actions[0], std::vector<Row>{start});
    protectionOff();
    EXPECT_EQ(content().actions[0], std::vector<Row>{start}) << "also while Protection is off";
    status.agentInstalled = true;
    EXPECT_EQ(row(content(), MenuAction::installAgent), std::nullopt);
}

TEST_F(MenuContentTest, TheProtectionRowTurnsProtectionTheOtherWay)
{
    EXPECT_EQ(content().actions[0],
              std::vector<Row>{enabledRow(MenuAction::protectOff, "Protection On", "Turn Off", "help_protection_on")});
    protectionOff();
    EXPECT_EQ(content().actions[0],
              std::vector<Row>{enabledRow(MenuAction::protectOn, "Protection Off", "Turn On", "help_protection_off")});
}

TEST_F(MenuContentTest, UnloadingIsOfferedOnlyWithAMemoryTip)
{
    const Row unload = enabledRow(MenuAction::unloadListed, "Unload listed AI", "", "help_unload_listed_ai");
    EXPECT_EQ(row(content(), MenuAction::unloadListed), std::nullopt);
    status.swapCritical = true;
    EXPECT_EQ(row(content(), MenuAction::unloadListed), std::nullopt) << "no listed AI is live";
    swapCriticalWithLiveAi();
    EXPECT_EQ(row(content(), MenuAction::unloadListed), unload);
    status.swapCritical = false;
    EXPECT_EQ(row(content(), MenuAction::unloadListed), std::nullopt);
    status.memoryReliefTip = "Unload something.";
    EXPECT_EQ(row(content(), MenuAction::unloadListed), unload);
    status.memoryReliefTip = "";
    EXPECT_EQ(row(content(), MenuAction::unloadListed), std::nullopt);
}

TEST_F(MenuContentTest, OpenAtLoginIsTurnedTheOtherWay)
{
    EXPECT_EQ(row(content(), MenuAction::openAtLoginOn),
              enabledRow(MenuAction::openAtLoginOn, "Open at Login: Off", "Turn On", "help_open_at_login"));
    situation.openAtLogin = true;
    EXPECT_EQ(row(content(), MenuAction::openAtLoginOff),
              enabledRow(MenuAction::openAtLoginOff, "Open at Login: On", "Turn Off", "help_open_at_login"));
    EXPECT_EQ(row(content(), MenuAction::openAtLoginOn), std::nullopt);
}

TEST_F(MenuContentTest, AutomaticUpdatesAreFlippedByTheirRow)
{
    EXPECT_EQ(row(content(), MenuAction::automaticChecksOn),
              enabledRow(MenuAction::automaticChecksOn, "Auto updates: Off", "", "help_auto_updates"));
    situation.automaticChecksEnabled = true;
    EXPECT_EQ(row(content(), MenuAction::automaticChecksOff),
              enabledRow(MenuAction::automaticChecksOff, "Auto updates: On", "", "help_auto_updates"));
    EXPECT_EQ(row(content(), MenuAction::automaticChecksOn), std::nullopt);
}

TEST_F(MenuContentTest, WithoutAConfiguredUpdaterOnlyTheAutomaticUpdatesAreMissing)
{
    Groups without = actions(content());
    without[1].pop_back();
    situation.updaterConfigured = false;
    for (const bool enabled : {false, true}) {
        situation.automaticChecksEnabled = enabled;
        EXPECT_EQ(actions(content()), without);
    }
}

TEST_F(MenuContentTest, TheRemainingActionsAreAlwaysThere)
{
    const Row always[] = {
        enabledRow(MenuAction::liveData, "Live data", "", "help_live_data"),
        enabledRow(MenuAction::checkForUpdates, "Check for Updates...", "", "help_check_for_updates"),
        enabledRow(MenuAction::reportProblem, "Report a problem", "", "help_report_problem"),
        enabledRow(MenuAction::uninstall, "Uninstall…", "", "help_uninstall"),
        enabledRow(MenuAction::quit, "Quit Quenchly", "", "help_quit"),
    };
    for (const bool setUp : {true, false}) {
        status.agentInstalled = situation.updaterConfigured = setUp;
        situation.toolAvailability = setUp ? ToolAvailability::available : ToolAvailability::toolNotFound;
        for (const Row& expected : always)
            EXPECT_EQ(row(content(), expected.action), expected);
    }
}

TEST_F(MenuContentTest, OnlyTheRowsThatNeedTheToolWaitForIt)
{
    using enum MenuAction;
    using enum ToolAvailability;
    const std::set<MenuAction> needTheTool{installAgent, protectOn, protectOff, unloadListed};
    const std::map<ToolAvailability, std::string> reasons{
        {available, ""},
        {toolNotFound, "Needs the quenchly tool, which was not found"},
        {interpreterNotFound, "Needs Node.js, which was not found"},
    };
    status.memoryReliefTip = "Unload something.";
    for (const bool installed : {true, false}) {
        for (const auto tool : {available, toolNotFound, interpreterNotFound}) {
            for (const bool busy : {true, false}) {
                status.agentInstalled = installed;
                situation.toolAvailability = tool;
                situation.protectBusy = busy;
                const MenuContent shown = content();
                EXPECT_EQ(shown.actions[0].size(), 2u) << "disabled, not hidden";
                for (const std::vector<Row>& group : shown.actions)
                    for (const Row& row : group) {
                        const bool needsTheTool = needTheTool.contains(row.action);
                        EXPECT_EQ(row.enabled, !needsTheTool || (tool == available && !busy)) << row.label;
                        EXPECT_EQ(row.reason, needsTheTool ? reasons.at(tool) : "") << row.label;
                    }
            }
        }
    }
}

TEST_F(MenuContentTest, AcknowledgingAndCheckingDisableNoRow)
{
    const MenuContent before = content();
    situation.ackBusy = true;
    situation.checkInFlight = true;
    EXPECT_EQ(content().actions, before.actions);
}

}  // namespace
}  // namespace quenchly
