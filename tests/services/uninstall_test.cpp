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

/// Uninstalls with a data folder that must stay: the tool is not told to remove it, and the alert after the question
/// and the log say the same reason.
class KeptDataTest : public UninstallTest {
protected:
    /// The alert's text; what the answers to the other alerts lead to goes on.
    std::string refusal(const System& system)
    {
        world.desktop.alerts.clear();
        world.log.clear();
        run(system, {uninstall, removeData, 0, toTrash});
        EXPECT_EQ(tool.runs().back(), std::vector<std::string>{"remove-agent"});
        EXPECT_EQ(world.desktop.events.back(), "terminate");
        if (world.desktop.alerts.size() != 4)
            return "no alert";
        const Alert& alert = world.desktop.alerts.at(2);
        EXPECT_EQ(alert.title, "Saved data was not removed");
        EXPECT_EQ(alert.buttons, Events{"OK"});
        const std::string reason = alert.text.substr(0, alert.text.find('\n'));
        EXPECT_EQ(world.log.size(), 1u);
        EXPECT_NE(world.log.back().find(reason), std::string::npos) << world.log.back();
        return alert.text;
    }

    System on(const std::filesystem::path& dataFolder)
    {
        std::filesystem::remove(world.scratch / "program/quenchly");
        System system = systemWithTool();
        std::filesystem::remove(heatState);
        system.environment["QUENCHLY_HOME"] = dataFolder;
        return system;
    }

    /// A folder that is the data folder because it has a state.
    std::filesystem::path withState(const std::filesystem::path& relative)
    {
        world.scratch.write(relative / "state/heat-state.json", "{}");
        return world.scratch / relative;
    }
};

TEST_F(KeptDataTest, AHomeFolderStays)
{
    const std::string sentence = "The data folder is a home folder or holds one. It was left as it is.\n\n";
    EXPECT_EQ(refusal(on(withState("."))), sentence + (world.scratch / ".").string());
    EXPECT_EQ(refusal(on(world.scratch.makeLink("to home", world.home()))),
              sentence + (world.scratch / "to home").string());
    System system = on(withState("homes"));
    system.homeFolder = world.scratch.makeFolder("homes/ann");
    EXPECT_EQ(refusal(system), sentence + (world.scratch / "homes").string());
}

TEST_F(KeptDataTest, WhatIsNotTheUsersOrNoFolderOfItsOwnStays)
{
    System system = on({});
    // What a link in the place of the data folder leads to when the question is answered.
    const auto refusalOf = [&](const std::filesystem::path& target) {
        withState("data");
        system.environment["QUENCHLY_HOME"] = world.scratch / "data";
        world.desktop.duringAlert = [&](const Alert& alert) {
            if (alert.title != "Remove saved data too?")
                return;
            std::filesystem::remove_all(world.scratch / "data");
            world.scratch.makeLink("data", target);
        };
        const std::string text = refusal(system);
        std::filesystem::remove(world.scratch / "data");
        return text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(refusalOf("/"), "The data folder is the root of the file system. It was left as it is.");
    EXPECT_EQ(refusalOf("/proc"), "A disk is mounted at the data folder. It was left as it is.");
    EXPECT_EQ(refusalOf(world.scratch.write("file", "")),
              "What is in the data folder’s place is no folder. It was left as it is.");
    const std::filesystem::path strange = geteuid() == 0 ? world.scratch.makeFolder("strange") : "/usr/share";
    if (geteuid() == 0) {
        ASSERT_EQ(chown(strange.c_str(), 1, 1), 0);
    }
    EXPECT_EQ(refusalOf(strange), "The data folder belongs to another user. It was left as it is.");
}

TEST_F(KeptDataTest, WhatALinkLeadsToOutsideOfAHomeFolderThatHoldsEverythingStays)
{
    System system = on({});
    system.homeFolder = world.scratch.makeFolder("given");
    system.launchAgentsFolder = world.scratch.makeFolder("given/agents");
    system.keepsToHomeFolder = true;
    withState("elsewhere");
    const auto link = world.scratch.makeLink("given/Library/Application Support/Quenchly", world.scratch / "elsewhere");
    EXPECT_EQ(
        refusal(system),
        "The data folder lies outside of the home folder that was given. It was left as it is.\n\n" + link.string());
}

TEST_F(UninstallTest, ABackgroundCheckOutsideOfAHomeFolderThatHoldsEverythingStays)
{
    for (const bool withTool : {true, false}) {
        world.log.clear();
        System system = withTool ? systemWithTool() : systemWithoutTool();
        system.homeFolder = world.scratch.makeFolder("given");
        system.keepsToHomeFolder = true;
        system.launchctl.clear();
        system.launchAgentsFolder = world.scratch / "given/LaunchAgents";
        std::filesystem::remove(system.launchAgentsFolder);
        world.scratch.makeLink("given/LaunchAgents", world.agentFile().parent_path());
        run(system, {uninstall, keepData, toTrash});
        EXPECT_TRUE(agentIsInstalled());
        EXPECT_FALSE(tool.hasStarted());
        EXPECT_EQ(world.log.size(), 1u);
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
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
