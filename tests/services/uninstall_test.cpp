#include <gtest/gtest.h>
#include <unistd.h>

#include <QSignalSpy>
#include <QTest>
#include <future>
#include <map>
#include <nlohmann/json.hpp>
#include <thread>

#include "patience.h"
#include "recorded_tool.h"
#include "scripted_system.h"
#include "shown_language.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

using Answer = std::optional<std::size_t>;
using Events = std::vector<std::string>;
using Runs = std::vector<std::vector<std::string>>;
using Status = LoginItem::Status;

constexpr Answer uninstall = 0;
constexpr Answer cancel = 1;
constexpr Answer keepData = 0;
constexpr Answer removeData = 1;
constexpr Answer toTrash = 0;
constexpr Answer keepApp = 1;
constexpr Answer dismissed = std::nullopt;

class UninstallTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    testing::RecordedTool tool{world.scratch};
    std::filesystem::path heatState = world.dataHome() / "state/heat-state.json";

    UninstallTest() { world.writeState("heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z"})"); }

    System systemWithTool(const std::string& behaviour = {})
    {
        world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
        System system = world.system();
        system.environment = tool.environment(behaviour);
        return system;
    }

    System systemWithoutTool(const std::string& behaviour = {})
    {
        System system = world.system();
        system.launchctl = testing::RecordedTool::program();
        system.environment = tool.environment(behaviour);
        return system;
    }

    void run(const System& system, std::deque<Answer> answers)
    {
        world.desktop.answers = std::move(answers);
        StateWatcher watcher(system);
        watcher.uninstallQuenchly();
    }

    Runs agentBootOut() const { return {{"bootout", "gui/" + std::to_string(getuid()) + "/com.brindlemoor.quenchly"}}; }

    bool agentIsInstalled() const { return std::filesystem::exists(world.agentFile()); }
};

TEST_F(UninstallTest, CancellingChangesNothingAndTheProgramGoesOn)
{
    for (const Answer& answer : {cancel, dismissed}) {
        world.desktop.events.clear();
        world.desktop.answers = {answer};
        StateWatcher watcher(systemWithTool());
        watcher.uninstallQuenchly();
        EXPECT_EQ(world.desktop.events, (Events{"regular", "activate", "alert Uninstall Quenchly?", "accessory"}));
        EXPECT_FALSE(tool.hasStarted());
        EXPECT_TRUE(agentIsInstalled());
        EXPECT_TRUE(watcher.openAtLogin());
        QSignalSpy published(&watcher, &StateWatcher::published);
        EXPECT_TRUE(QTest::qWaitFor([&] { return published.count() > 0; }, testing::patience)) << "it refreshes again";
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
}

TEST_F(UninstallTest, TheAlertsSayWhatEachStepDoes)
{
    run(systemWithTool(), {uninstall, keepData, keepApp, 0});
    ASSERT_EQ(world.desktop.alerts.size(), 4u);
    const Alert& confirmation = world.desktop.alerts.at(0);
    EXPECT_EQ(
        confirmation,
        (Alert{.title = "Uninstall Quenchly?",
               .text = "This turns off Open at Login and removes the background check (com.brindlemoor.quenchly). "
                       "Your saved data stays on this Mac; you can remove it in the next step.",
               .buttons = {"Uninstall", "Cancel"}}));
    const Alert& data = world.desktop.alerts.at(1);
    EXPECT_EQ(data, (Alert{.title = "Remove saved data too?",
                           .text = "This step is optional. It archives your Quenchly data folder (its saved state) and "
                                   "then removes the live copy. Skip it to keep the data for a later install.\n\n" +
                                   world.dataHome().string(),
                           .buttons = {"Keep saved data", "Remove saved data"}}));
    EXPECT_EQ(world.desktop.alerts.at(2),
              (Alert{.title = "Move Quenchly to the Trash?",
                     .text = "Removes the menu-bar app from this Mac. You can reinstall from the Quenchly download "
                             "later.",
                     .buttons = {"Move to Trash", "Keep app"}}));
    EXPECT_EQ(world.desktop.alerts.at(3),
              (Alert{.title = "Quenchly uninstalled",
                     .text = "Open at Login is off and the background check is removed. The app is still here; Quit "
                             "when you are done, or Move to Trash from Finder.",
                     .buttons = {"OK"}}));
}

TEST_F(UninstallTest, TheAlertsSpeakTheLanguageInForce)
{
    using L10n::t;
    for (const AppLanguage language : testing::allLanguages) {
        L10n::testingLanguage = language;
        world.desktop.alerts.clear();
        run(systemWithoutTool(), {uninstall, keepData, keepApp, 0});
        const std::vector<Alert> expected{
            {.title = t("uninstall_question"),
             .text = L10n::tf("uninstall_question_text", {std::string("com.brindlemoor.quenchly")}),
             .buttons = {t("uninstall_button"), t("cancel")}},
            {.title = t("remove_data_question"),
             .text = t("remove_data_question_text") + "\n\n" + world.dataHome().string(),
             .buttons = {t("keep_saved_data"), t("remove_saved_data")}},
            {.title = t("trash_question"),
             .text = t("trash_question_text"),
             .buttons = {t("move_to_trash"), t("keep_app")}},
            {.title = t("uninstalled"), .text = t("uninstalled_text"), .buttons = {t("ok")}}};
        EXPECT_EQ(world.desktop.alerts, expected) << rawValue(language);
    }
    L10n::testingLanguage.reset();
}

TEST_F(UninstallTest, EachStepIsDoneBeforeTheNextIsAsked)
{
    std::map<std::string, Runs> runsBefore;
    std::map<std::string, Status> loginItemBefore;
    world.desktop.duringAlert = [&](const Alert& alert) {
        runsBefore[alert.title] = tool.runs();
        loginItemBefore[alert.title] = world.loginItem->now;
    };
    run(systemWithTool(), {uninstall, removeData, toTrash});
    EXPECT_EQ(runsBefore["Uninstall Quenchly?"], Runs());
    EXPECT_EQ(loginItemBefore["Uninstall Quenchly?"], Status::enabled);
    EXPECT_EQ(runsBefore["Remove saved data too?"], (Runs{{"remove-agent"}}));
    EXPECT_EQ(loginItemBefore["Remove saved data too?"], Status::notRegistered);
    EXPECT_EQ(runsBefore["Move Quenchly to the Trash?"], (Runs{{"remove-agent"}, {"uninstall", "--yes"}}));
    EXPECT_EQ(tool.events().at(0)["environment"]["QUENCHLY_HOME"], world.dataHome().string());
    EXPECT_EQ(world.desktop.events,
              (Events{"regular", "activate", "alert Uninstall Quenchly?", "regular", "activate",
                      "alert Remove saved data too?", "regular", "activate", "alert Move Quenchly to the Trash?",
                      "trash " + (world.scratch / "Quenchly.app").string(), "terminate"}));
    EXPECT_TRUE(world.log.empty());
}

TEST_F(UninstallTest, TheDataStaysUnlessItsRemovalIsChosen)
{
    for (const Answer& answer : {keepData, dismissed}) {
        run(systemWithTool(), {uninstall, answer, toTrash});
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
    EXPECT_EQ(tool.runs(), (Runs{{"remove-agent"}, {"remove-agent"}}));
}

TEST_F(UninstallTest, KeepingTheProgramStillEndsIt)
{
    for (const Answer& answer : {keepApp, dismissed}) {
        world.desktop.events.clear();
        run(systemWithTool(), {uninstall, keepData, answer, 0});
        const Events last(world.desktop.events.end() - 5, world.desktop.events.end());
        EXPECT_EQ(last, (Events{"regular", "activate", "alert Quenchly uninstalled", "accessory", "terminate"}));
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
}

TEST_F(UninstallTest, AFailedMoveToTheTrashIsLoggedAndTheProgramEnds)
{
    world.desktop.trashRefusal = "100% full";
    run(systemWithTool(), {uninstall, keepData, toTrash});
    EXPECT_EQ(world.log, Events{"Quenchly uninstall Trash failed: 100% full"});
    EXPECT_EQ(world.desktop.events.back(), "terminate");
    EXPECT_EQ(world.desktop.alerts.size(), 3u);
}

TEST_F(UninstallTest, TheTrashMayAnswerOnAnotherThreadWhenTheWatcherIsGone)
{
    std::thread trash;
    std::promise<void> watcherIsGone;
    System system = systemWithTool();
    system.moveToTrash = [&](const std::filesystem::path&, const TrashCompletion& completion) {
        trash = std::thread([&, completion] {
            watcherIsGone.get_future().wait();
            completion("slow disk");
        });
    };
    run(system, {uninstall, keepData, toTrash});
    EXPECT_NE(world.desktop.events.back(), "terminate");
    watcherIsGone.set_value();
    trash.join();
    EXPECT_EQ(world.desktop.events.back(), "terminate");
    EXPECT_EQ(world.log, Events{"Quenchly uninstall Trash failed: slow disk"});
}

TEST_F(UninstallTest, WithoutAToolTheJobIsBootedOutByItsLabelAndItsFileDeleted)
{
    bool fileWasThereAfterBootOut = true;
    world.desktop.duringAlert = [&](const Alert& alert) {
        if (alert.title == "Remove saved data too?")
            fileWasThereAfterBootOut = agentIsInstalled();
    };
    run(systemWithoutTool(), {uninstall, removeData, toTrash});
    EXPECT_EQ(tool.runs(), agentBootOut());
    EXPECT_FALSE(fileWasThereAfterBootOut);
    EXPECT_TRUE(std::filesystem::exists(heatState)) << "without a tool no data is removed";
    EXPECT_EQ(world.desktop.events.back(), "terminate");
}

TEST_F(UninstallTest, ALaunchctlThatFailsOrFloodsOrIsMissingIsIgnored)
{
    for (const char* behaviour : {"fail", "flood", "missing"}) {
        world.scratch.write("Library/LaunchAgents/com.brindlemoor.quenchly.plist", "<plist/>");
        System system = systemWithoutTool(behaviour);
        if (behaviour == std::string("missing"))
            system.launchctl = world.scratch / "no/launchctl";
        run(system, {uninstall, keepData, toTrash});
        EXPECT_FALSE(agentIsInstalled()) << behaviour;
        EXPECT_EQ(world.desktop.events.back(), "terminate") << behaviour;
    }
    EXPECT_EQ(tool.runs().size(), 2u);
    EXPECT_TRUE(world.log.empty());
}

TEST_F(UninstallTest, AJobFileThatCannotBeDeletedOrIsNotThereIsIgnored)
{
    std::filesystem::remove(world.agentFile());
    run(systemWithoutTool(), {uninstall, keepData, toTrash});
    world.scratch.write("Library/LaunchAgents/com.brindlemoor.quenchly.plist/inside", "a folder of that name");
    run(systemWithoutTool(), {uninstall, keepData, toTrash});
    EXPECT_TRUE(agentIsInstalled());
    EXPECT_EQ(world.desktop.events.back(), "terminate");
}

TEST_F(UninstallTest, LaunchdIsLeftAloneWhereItsJobsAreNotOurs)
{
    System system = systemWithoutTool();
    system.launchctl.clear();
    run(system, {uninstall, keepData, toTrash});
    EXPECT_FALSE(tool.hasStarted());
    EXPECT_FALSE(agentIsInstalled());
}

TEST_F(UninstallTest, AToolThatFailsOrDiesStopsNothing)
{
    for (const char* behaviour : {"fail", "killed"}) {
        run(systemWithTool(behaviour), {uninstall, removeData, toTrash});
        EXPECT_EQ(world.desktop.events.back(), "terminate") << behaviour;
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
    EXPECT_EQ(tool.runs().size(), 4u);
}

TEST_F(UninstallTest, ALoginItemThatStaysIsLoggedAndShown)
{
    world.desktop.answers = {uninstall, keepData, toTrash};
    StateWatcher watcher(systemWithTool());
    world.loginItem->refusal = "not permitted";
    watcher.uninstallQuenchly();
    EXPECT_TRUE(watcher.openAtLogin());
    EXPECT_EQ(world.log, Events{"Quenchly Open at Login failed: not permitted"});
    EXPECT_EQ(tool.runs(), (Runs{{"remove-agent"}}));
}

TEST_F(UninstallTest, ThereIsNoRefreshWhileAnAlertIsOpen)
{
    world.desktop.answers = {cancel};
    StateWatcher watcher(systemWithTool());
    QSignalSpy published(&watcher, &StateWatcher::published);
    testing::ScriptedSystem otherWorld;
    world.desktop.duringAlert = [&](const Alert&) {
        StateWatcher other(otherWorld.system());
        QSignalSpy refreshes(&other, &StateWatcher::published);
        EXPECT_TRUE(QTest::qWaitFor([&] { return refreshes.count() == 2; }, testing::patience));
    };
    watcher.uninstallQuenchly();
    EXPECT_EQ(published.count(), 0) << "though another watcher's refreshes came";
}

TEST_F(UninstallTest, AskingAgainWhileAnAlertIsOpenDoesNothing)
{
    world.desktop.answers = {cancel};
    StateWatcher watcher(systemWithTool());
    world.desktop.duringAlert = [&](const Alert&) { watcher.uninstallQuenchly(); };
    watcher.uninstallQuenchly();
    EXPECT_EQ(world.desktop.alerts.size(), 1u);
}

TEST_F(UninstallTest, TheStandInCheckerRemovesItsJobAndItsState)
{
    world.scratch.makeLink("program/quenchly", QUENCHLY_DEMO_TOOL_PATH);
    System system = world.system();
    system.environment = {{"QUENCHLY_LAUNCH_AGENTS", world.agentFile().parent_path()}};
    run(system, {uninstall, removeData, toTrash});
    EXPECT_FALSE(agentIsInstalled());
    EXPECT_FALSE(std::filesystem::exists(heatState));
}

#ifdef Q_OS_LINUX
TEST_F(UninstallTest, OnAnotherHomeFolderTheRealSystemChangesNothingOutsideOfIt)
{
    System system = makeSystem(world.home());
    const System scripted = world.system();
    system.executableFolder = scripted.executableFolder;
    system.currentDirectory = scripted.currentDirectory;
    system.environment["PATH"].clear();
    system.application = scripted.application;
    system.runAlert = scripted.runAlert;
    system.log = scripted.log;
    const std::filesystem::path autostart = world.home() / ".config/autostart/quenchly.desktop";
    bool startedAtLogin = false;
    world.desktop.duringAlert = [&](const Alert& alert) {
        if (alert.title == "Uninstall Quenchly?")
            startedAtLogin = std::filesystem::exists(autostart);
    };
    run(system, {uninstall, removeData, toTrash});
    EXPECT_TRUE(startedAtLogin);
    EXPECT_FALSE(std::filesystem::exists(autostart));
    EXPECT_FALSE(agentIsInstalled());
    EXPECT_TRUE(std::filesystem::exists(heatState));
    EXPECT_TRUE(std::filesystem::exists(system.applicationItem));
    EXPECT_EQ(world.log, Events{"Quenchly uninstall Trash failed: The program does not belong to this home folder."});
    EXPECT_EQ(world.desktop.events.back(), "terminate");
}
#endif

}  // namespace
}  // namespace quenchly
