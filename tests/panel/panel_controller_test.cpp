#include "panel_controller.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <future>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "recorded_tool.h"
#include "scripted_system.h"
#include "state_watcher.h"
#include "updater.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;
using testing::eventually;
using State = TargetRow::State;
using Runs = std::vector<std::vector<std::string>>;

constexpr const char* calmState = R"({"lastCheck":"2026-03-01T11:59:30Z"})";
constexpr const char* overloadState = R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})";
constexpr const char* setAsideState = R"({"lastCheck":"2026-03-01T11:59:30Z","quarantined":[)"
                                      R"({"id":"one","cmd":"ollama","quarantinedAt":"2026-03-01T11:00:00Z"},)"
                                      R"({"id":"two","cmd":"ollama","quarantinedAt":"2026-03-01T11:00:00Z"}]})";

class ScriptedBackend final : public UpdaterBackend {
public:
    explicit ScriptedBackend(bool& automatic) : automatic_(automatic) {}

    bool automaticallyChecksForUpdates() const override { return automatic_; }
    void setAutomaticallyChecksForUpdates(bool enabled) override { automatic_ = enabled; }
    void setAutomaticallyDownloadsUpdates(bool) override {}
    void checkForUpdates() override {}

private:
    bool& automatic_;
};

/// Ollama runs, and a listing ends when it may.
class HeldTable final : public ProcessTable {
public:
    explicit HeldTable(std::shared_future<void> mayEnd) : mayEnd_(std::move(mayEnd)) {}

    void beginRefresh() override { mayEnd_.wait(); }
    std::vector<ProcessId> named(const std::string& name) override
    {
        return name == "ollama" ? std::vector<ProcessId>{10} : std::vector<ProcessId>{};
    }
    std::vector<ProcessId> matching(const std::string&) override { return {}; }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>&) override { return {{10, "R"}}; }

private:
    std::shared_future<void> mayEnd_;
};

class PanelControllerTest : public ::testing::Test {
protected:
    PanelControllerTest() { world.writeState("heat-state.json", calmState); }

    void start(const System& system)
    {
        watcher = std::make_unique<StateWatcher>(system);
        updater = std::make_unique<Updater>(system);
        controller = std::make_unique<PanelController>(*watcher, *updater);
        changes = std::make_unique<QSignalSpy>(controller.get(), &PanelController::changed);
        QObject::connect(controller.get(), &PanelController::leaving,
                         [this] { world.desktop.events.push_back("leaving"); });
    }
    void start() { start(world.system()); }

    void startWithTool()
    {
        world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
        System system = world.system();
        system.environment = tool.environment();
        start(system);
    }

    void startWithUpdates()
    {
        System system = world.system();
        system.bundleInfo = {{"CFBundleShortVersionString", "9.8.7"},
                             {"SUFeedURL", "https://updates.example/appcast.xml"},
                             {"SUPublicEDKey", "q7Z2m0hYx1sP9dKf4tVb8nRc3wLg6jUe5aQi0oXy+/E="}};
        system.startUpdaterBackend = [this] { return std::make_unique<ScriptedBackend>(automaticChecks); };
        start(system);
    }

    void change(const char* state)
    {
        world.writeState("heat-state.json", state);
        watcher->reload();
    }

    State ollama() const { return controller->content().targets.rows.at(0).state; }
    bool waitForOllama(State state) const
    {
        return QTest::qWaitFor([&] { return ollama() == state; }, 60'000);
    }

    bool offers(MenuAction action) const
    {
        for (const auto& group : controller->content().actions)
            for (const MenuContent::Row& row : group)
                if (row.action == action)
                    return true;
        return false;
    }

    /// Waits until the tool has done what it was asked for; a refresh of the timer may fall in between.
    bool waitUntilIdle() const
    {
        return QTest::qWaitFor([this] { return !watcher->protectBusy() && !watcher->ackBusy(); }, 60'000);
    }

    testing::ScriptedSystem world;
    testing::RecordedTool tool{world.scratch};
    bool automaticChecks = true;
    std::unique_ptr<StateWatcher> watcher;
    std::unique_ptr<Updater> updater;
    std::unique_ptr<PanelController> controller;
    std::unique_ptr<QSignalSpy> changes;
};

TEST_F(PanelControllerTest, TheContentIsDecidedFromWatcherUpdaterBundleAndClock)
{
    startWithUpdates();
    EXPECT_EQ(controller->content().header.headline, watcher->status().headline.utf8());
    EXPECT_EQ(controller->content().header.lastCheck, "");
    EXPECT_EQ(controller->content().footer.version, "9.8.7");
    EXPECT_EQ(controller->content().footer.updates, "");
    EXPECT_TRUE(offers(MenuAction::automaticChecksOff));
    EXPECT_TRUE(offers(MenuAction::openAtLoginOff));
    change(overloadState);
    EXPECT_EQ(controller->content().header.headline, "Overload. Watching.");
    world.now += 10min;
    EXPECT_EQ(controller->content().header.lastCheck, "Checking in a moment.") << "by the clock of now";
}

TEST_F(PanelControllerTest, BeforeTheFirstScanTheTargetsHaveTheirNamesOnly)
{
    start();
    std::vector<std::string> names;
    for (const MenuContent::Target& target : controller->content().targets.rows) {
        names.push_back(target.name);
        EXPECT_EQ(target.state, State::unknown);
        EXPECT_EQ(target.detail, "");
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Ollama", "MLX LM Server", "LM Studio", "llama.cpp"}));
}

TEST_F(PanelControllerTest, ShowingItScansTheTargetsAndTellsWhatWasFound)
{
    world.targets->set({{"ollama", "R"}});
    start();
    EXPECT_EQ(world.targets->scans, 0);
    controller->setShown(true);
    EXPECT_EQ(changes->count(), 1) << "what has changed since it was hidden";
    controller->setShown(true);
    EXPECT_EQ(changes->count(), 1) << "it was shown already";
    ASSERT_TRUE(waitForOllama(State::running));
    EXPECT_GE(changes->count(), 2);
    EXPECT_EQ(world.targets->scans, 1);
}

TEST_F(PanelControllerTest, WhileItIsShownAChangeOfTheStatusIsToldAndScannedFor)
{
    start();
    controller->setShown(true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return controller->content().targets.rows.at(0).detail == "Idle"; }));
    watcher->reload();
    watcher->reload();
    QTest::qWait(0);
    EXPECT_EQ(world.targets->scans, 1) << "nothing has changed";
    world.targets->set({{"ollama", "R"}});
    const auto before = changes->count();
    change(overloadState);
    EXPECT_GT(changes->count(), before);
    ASSERT_TRUE(waitForOllama(State::running));
    EXPECT_EQ(world.targets->scans, 2);
}

TEST_F(PanelControllerTest, WhileItIsHiddenNothingIsScannedOrTold)
{
    startWithUpdates();
    controller->setShown(true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return controller->content().targets.rows.at(0).detail == "Idle"; }));
    controller->setShown(false);
    changes->clear();
    change(overloadState);
    updater->setAutomaticChecksEnabled(false);
    QTest::qWait(0);
    EXPECT_EQ(changes->count(), 0);
    EXPECT_EQ(world.targets->scans, 1);
    world.targets->set({{"ollama", "R"}});
    controller->setShown(true);
    EXPECT_EQ(changes->count(), 1);
    EXPECT_TRUE(waitForOllama(State::running));
    EXPECT_EQ(world.targets->scans, 2);
}

TEST_F(PanelControllerTest, AScanThatEndsAfterHidingIsKeptAndNotTold)
{
    world.targets->set({{"ollama", "R"}});
    start();
    controller->setShown(true);
    controller->setShown(false);
    changes->clear();
    EXPECT_TRUE(waitForOllama(State::running));
    EXPECT_EQ(changes->count(), 0);
}

TEST_F(PanelControllerTest, ForAPictureTheTargetsAreScannedAtOnceAsTheCheckerTreatsThem)
{
    world.targets->set({{"ollama", "R"}, {"custom", "T"}});
    world.writeState("heat-state.json",
                     R"({"lastCheck":"2026-03-01T11:59:30Z","paused":[{"label":"custom","pid":1}]})");
    world.writeState("throttle.json", R"({"level":1,"targets":[{"label":"ollama"}]})");
    start();
    controller->scanNow();
    EXPECT_EQ(world.targets->scans, 1);
    const std::vector<MenuContent::Target> rows = controller->content().targets.rows;
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows[0].detail, "Eased back") << "slowed down";
    EXPECT_EQ(rows[4].name, "custom");
    EXPECT_EQ(rows[4].state, State::paused);
    EXPECT_EQ(changes->count(), 0) << "nobody looks";
}

TEST_F(PanelControllerTest, OpeningReadsTheLoginItemAgain)
{
    start();
    world.loginItem->now = LoginItem::Status::notRegistered;
    EXPECT_TRUE(offers(MenuAction::openAtLoginOff));
    controller->prepareToOpen();
    EXPECT_TRUE(offers(MenuAction::openAtLoginOn));
}

TEST_F(PanelControllerTest, APanelThatOpensKnowsTheTargetsInItsFirstFrame)
{
    world.targets->set({{"ollama", "R"}});
    start();
    controller->prepareToOpen(60s);
    EXPECT_EQ(ollama(), State::running);
    EXPECT_EQ(changes->count(), 0) << "nobody looks yet";
    controller->setShown(true);
    EXPECT_EQ(world.targets->scans, 1) << "no second scan for the same opening";
    controller->prepareToOpen(60s);
    EXPECT_EQ(world.targets->scans, 1) << "it is open already";
    controller->setShown(false);
    controller->setShown(true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return world.targets->scans == 2; }, 60'000)) << "shown again unprepared";
}

TEST_F(PanelControllerTest, AScanThatTakesTooLongLeavesTheLastRowsMeanwhile)
{
    std::promise<void> end;
    System system = world.system();
    system.makeProcesses = [mayEnd = end.get_future().share()] { return std::make_unique<HeldTable>(mayEnd); };
    start(system);
    controller->prepareToOpen(1ms);
    EXPECT_EQ(controller->content().targets.rows.at(0).name, "Ollama");
    EXPECT_EQ(ollama(), State::unknown);
    controller->setShown(true);
    changes->clear();
    end.set_value();
    EXPECT_TRUE(waitForOllama(State::running));
    EXPECT_EQ(changes->count(), 1);
}

TEST_F(PanelControllerTest, EachActionOfTheToolReachesItThoughNothingIsShown)
{
    using enum MenuAction;
    world.writeState("heat-state.json", setAsideState);
    startWithTool();
    Runs expected;
    const std::pair<MenuAction, const char*> actions[] = {{installAgent, "install-agent"},
                                                          {protectOn, "enable"},
                                                          {protectOff, "disable"},
                                                          {unloadListed, "unload-listed"}};
    for (const auto& [action, command] : actions) {
        controller->perform(action);
        EXPECT_TRUE(watcher->protectBusy()) << command;
        ASSERT_TRUE(waitUntilIdle());
        expected.push_back({command});
    }
    controller->acknowledge("other");
    EXPECT_EQ(controller->content().setAside->acknowledge, "Acknowledging…");
    ASSERT_TRUE(waitUntilIdle());
    controller->acknowledgeAll();
    ASSERT_TRUE(waitUntilIdle());
    for (const char* id : {"other", "one", "two"})
        expected.push_back({"quarantine", "ack", id});
    EXPECT_EQ(tool.runs(), expected);
    EXPECT_EQ(changes->count(), 0);
    EXPECT_EQ(world.targets->scans, 0);
    EXPECT_TRUE(world.desktop.events.empty()) << "none of them leaves the panel";
}

TEST_F(PanelControllerTest, TheSwitchesOfLoginAndUpdatesAreTurnedBothWays)
{
    using enum MenuAction;
    startWithUpdates();
    controller->perform(openAtLoginOff);
    EXPECT_EQ(world.loginItem->now, LoginItem::Status::notRegistered);
    controller->perform(openAtLoginOn);
    EXPECT_EQ(world.loginItem->now, LoginItem::Status::enabled);
    controller->perform(automaticChecksOff);
    EXPECT_FALSE(automaticChecks);
    controller->perform(automaticChecksOn);
    EXPECT_TRUE(automaticChecks);
    EXPECT_TRUE(world.desktop.events.empty()) << "none of them leaves the panel";
}

TEST_F(PanelControllerTest, LiveDataOpensTheDashboard)
{
    start();
    controller->perform(MenuAction::liveData);
    EXPECT_TRUE(eventually([this] { return world.opened->all().size() == 1; }));
    EXPECT_TRUE(world.desktop.events.empty()) << "the panel stays";
}

TEST_F(PanelControllerTest, ActionsThatShowSomethingElseTellThatTheyLeaveFirst)
{
    using enum MenuAction;
    const std::pair<MenuAction, const char*> actions[] = {{checkForUpdates, "alert Updates not configured yet"},
                                                          {reportProblem, "alert Support email copied"},
                                                          {uninstall, "alert Uninstall Quenchly?"},
                                                          {quit, "terminate"}};
    start();
    for (const auto& [action, effect] : actions) {
        world.desktop.events.clear();
        controller->perform(action);
        const std::vector<std::string>& events = world.desktop.events;
        ASSERT_FALSE(events.empty()) << effect;
        EXPECT_EQ(events.front(), "leaving") << effect;
        EXPECT_EQ(std::count(events.begin(), events.end(), "leaving"), 1) << effect;
        EXPECT_EQ(std::count(events.begin(), events.end(), effect), 1) << ::testing::PrintToString(events);
    }
}

}  // namespace
}  // namespace quenchly
