#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <chrono>
#include <future>
#include <memory>
#include <nlohmann/json.hpp>

#include "child_process.h"
#include "command_runner.h"
#include "dashboard.h"
#include "patience.h"
#include "recorded_tool.h"
#include "scripted_server.h"
#include "scripted_system.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;
using testing::eventually;
using testing::ScriptedServer;
using Runs = std::vector<std::vector<std::string>>;

constexpr const char* calmState = R"({"lastCheck":"2026-03-01T11:59:30Z"})";
constexpr const char* overloadState = R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})";

std::string stateWithSetAside(const std::vector<std::string>& ids)
{
    std::string entries;
    for (const std::string& id : ids)
        entries += (entries.empty() ? "" : ",") +
                   (R"({"id":")" + id +
                    R"(","kind":"process","cmd":"ollama serve","quarantinedAt":"2026-03-01T11:00:00Z","reason":"r"})");
    return R"({"lastCheck":"2026-03-01T11:59:30Z","quarantined":[)" + entries + "]}";
}

/// While no event loop runs, nothing but the end of a tool is handled: no refresh of the timer falls in between.
bool eventuallyWithoutTimer(const std::function<bool()>& condition)
{
    return eventually([&] {
        QCoreApplication::sendPostedEvents();
        return condition();
    });
}

class WatcherActionsTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    testing::RecordedTool tool{world.scratch};

    WatcherActionsTest() { world.writeState("heat-state.json", calmState); }

    System systemWithTool(const std::string& behaviour = {})
    {
        world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
        System system = world.system();
        system.environment = tool.environment(behaviour);
        return system;
    }

    static bool isIdle(const StateWatcher& watcher) { return !watcher.protectBusy() && !watcher.ackBusy(); }
};

struct Action {
    void (*start)(StateWatcher&);
    std::vector<std::string> arguments;
    bool acknowledges = false;
};

TEST_F(WatcherActionsTest, EachActionHandsTheToolItsArguments)
{
    const Action actions[] = {
        {.start = [](StateWatcher& w) { w.setProtect(true); }, .arguments = {"enable"}},
        {.start = [](StateWatcher& w) { w.setProtect(false); }, .arguments = {"disable"}},
        {.start = [](StateWatcher& w) { w.installAgent(); }, .arguments = {"install-agent"}},
        {.start = [](StateWatcher& w) { w.unloadListed(); }, .arguments = {"unload-listed"}},
        {.start = [](StateWatcher& w) { w.acknowledgeQuarantine("not in the list"); },
         .arguments = {"quarantine", "ack", "not in the list"},
         .acknowledges = true},
    };
    StateWatcher watcher(systemWithTool());
    Runs expected;
    for (const auto& [start, arguments, acknowledges] : actions) {
        start(watcher);
        EXPECT_EQ(watcher.protectBusy(), !acknowledges) << arguments.front();
        EXPECT_EQ(watcher.ackBusy(), acknowledges) << arguments.front();
        ASSERT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); })) << arguments.front();
        expected.push_back(arguments);
        EXPECT_EQ(tool.runs(), expected);
    }
    EXPECT_EQ(tool.events().at(0)["environment"]["QUENCHLY_HOME"], world.dataHome().string());
}

TEST_F(WatcherActionsTest, TheStateIsReadAgainBeforeTheFlagIsCleared)
{
    struct Seen {
        bool busy;
        bool hot;
        bool operator==(const Seen&) const = default;
    };
    StateWatcher watcher(systemWithTool("hang"));
    std::vector<Seen> seen;
    QObject::connect(&watcher, &StateWatcher::published, &watcher,
                     [&] { seen.push_back({.busy = watcher.protectBusy(), .hot = watcher.status().stillOverloaded}); });
    watcher.setProtect(true);
    world.writeState("heat-state.json", overloadState);
    tool.release();
    ASSERT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
    const std::vector<Seen> expected{
        {.busy = true, .hot = false}, {.busy = true, .hot = true}, {.busy = false, .hot = true}};
    EXPECT_EQ(seen, expected);
}

TEST_F(WatcherActionsTest, OneProtectionChangeAtATimeAndAnAcknowledgeBesideIt)
{
    StateWatcher watcher(systemWithTool("hang"));
    watcher.setProtect(true);
    ASSERT_TRUE(eventually([&] { return tool.runs().size() == 1; }));
    watcher.setProtect(false);
    watcher.unloadListed();
    watcher.installAgent();
    watcher.acknowledgeQuarantine("one");
    watcher.acknowledgeQuarantine("two");
    EXPECT_TRUE(watcher.protectBusy());
    EXPECT_TRUE(watcher.ackBusy());
    ASSERT_TRUE(eventually([&] { return tool.runs().size() == 2; }));
    tool.release();
    tool.release();
    ASSERT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
    EXPECT_EQ(tool.runs(), (Runs{{"enable"}, {"quarantine", "ack", "one"}}));

    watcher.unloadListed();
    ASSERT_TRUE(eventually([&] { return tool.runs().size() == 3; }));
    tool.release();
    ASSERT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
}

TEST_F(WatcherActionsTest, AllAreAcknowledgedOneAfterAnotherAndReadOnce)
{
    world.writeState("heat-state.json", stateWithSetAside({"b", "a", "c"}));
    StateWatcher watcher(systemWithTool("fail"));
    ASSERT_EQ(watcher.status().quarantine.size(), 3u);
    QSignalSpy published(&watcher, &StateWatcher::published);
    watcher.acknowledgeAllVisibleQuarantine();
    watcher.acknowledgeAllVisibleQuarantine();
    EXPECT_TRUE(watcher.ackBusy());
    EXPECT_FALSE(watcher.protectBusy());
    ASSERT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
    EXPECT_EQ(published.count(), 3) << "set, read, cleared";

    std::vector<std::string> order;
    for (const auto& event : tool.events())
        order.push_back(event["event"].get<std::string>() + " " + event["arguments"].at(2).get<std::string>());
    EXPECT_EQ(order, (std::vector<std::string>{"start b", "end b", "start a", "end a", "start c", "end c"}));
    EXPECT_EQ(tool.runs().front(), (std::vector<std::string>{"quarantine", "ack", "b"}));
}

TEST_F(WatcherActionsTest, WithNothingToAcknowledgeNothingHappens)
{
    world.writeState(
        "heat-state.json",
        R"({"lastCheck":"2026-03-01T11:59:30Z","quarantined":[{"id":"x","kind":"process","cmd":"ollama serve",)"
        R"("quarantinedAt":"2026-03-01T11:00:00Z","reason":"r","acknowledged":true}]})");
    StateWatcher watcher(systemWithTool());
    QSignalSpy published(&watcher, &StateWatcher::published);
    watcher.acknowledgeAllVisibleQuarantine();
    EXPECT_FALSE(watcher.ackBusy());
    EXPECT_EQ(published.count(), 0);
    EXPECT_FALSE(tool.hasStarted());
}

TEST_F(WatcherActionsTest, WithoutAToolNothingHappens)
{
    world.writeState("heat-state.json", stateWithSetAside({"a"}));
    StateWatcher watcher(world.system());
    QSignalSpy published(&watcher, &StateWatcher::published);
    watcher.setProtect(true);
    watcher.installAgent();
    watcher.unloadListed();
    watcher.acknowledgeQuarantine("a");
    watcher.acknowledgeAllVisibleQuarantine();
    EXPECT_TRUE(isIdle(watcher));
    EXPECT_EQ(published.count(), 0);
}

TEST_F(WatcherActionsTest, AToolInstalledMeanwhileIsFoundByTheNextAction)
{
    System system = world.system();
    system.environment = tool.environment();
    StateWatcher watcher(system);
    watcher.setProtect(true);
    EXPECT_TRUE(isIdle(watcher));
    world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
    watcher.setProtect(true);
    EXPECT_TRUE(watcher.protectBusy());
    EXPECT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
    EXPECT_TRUE(watcher.cliAvailable()) << "read before the flag was cleared";
    EXPECT_EQ(tool.runs(), (Runs{{"enable"}}));
}

TEST_F(WatcherActionsTest, AToolThatFailsOrDiesOrFloodsIsSilent)
{
    for (const char* behaviour : {"fail", "killed", "flood"}) {
        StateWatcher watcher(systemWithTool(behaviour));
        watcher.setProtect(true);
        EXPECT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); })) << behaviour;
        std::filesystem::remove(world.scratch / "program/quenchly");
    }
    EXPECT_EQ(tool.runs(), (Runs{{"enable"}, {"enable"}, {"enable"}}));
}

TEST_F(WatcherActionsTest, AToolThatVanishesBetweenFindingAndStartingIsSilent)
{
    world.scratch.write("program/quenchly", "neither a script nor a program");
    std::filesystem::permissions(world.scratch / "program/quenchly", std::filesystem::perms::owner_all);
    StateWatcher watcher(world.system());
    watcher.setProtect(true);
    EXPECT_TRUE(watcher.protectBusy());
    EXPECT_TRUE(eventuallyWithoutTimer([&] { return isIdle(watcher); }));
}

TEST_F(WatcherActionsTest, TheWatcherRefreshesWhileAToolHangs)
{
    StateWatcher watcher(systemWithTool("hang"));
    watcher.setProtect(true);
    QSignalSpy published(&watcher, &StateWatcher::published);
    for (const bool hot : {true, false}) {
        world.writeState("heat-state.json", hot ? overloadState : calmState);
        ASSERT_TRUE(QTest::qWaitFor([&] { return watcher.status().stillOverloaded == hot; }, testing::patience));
        EXPECT_TRUE(watcher.protectBusy());
    }
    tool.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !watcher.protectBusy(); }, testing::patience));
}

TEST_F(WatcherActionsTest, TheWatcherMayBeGoneBeforeItsToolEnds)
{
    {
        StateWatcher watcher(systemWithTool("hang"));
        watcher.setProtect(true);
        ASSERT_TRUE(eventually([&] { return tool.hasStarted(); }));
    }
    EXPECT_FALSE(tool.hasEnded());
    tool.release();
    EXPECT_TRUE(eventuallyWithoutTimer([&] { return tool.hasEnded() && testing::hasNoChild(); }));
}

TEST_F(WatcherActionsTest, TheWatcherMayGoWhenItPublishesTheEnd)
{
    auto watcher = std::make_unique<StateWatcher>(systemWithTool("hang"));
    watcher->setProtect(true);
    world.writeState("heat-state.json", overloadState);
    QObject::connect(watcher.get(), &StateWatcher::published, qApp, [&] { watcher.reset(); });
    tool.release();
    EXPECT_TRUE(eventuallyWithoutTimer([&] { return !watcher; }));
}

TEST_F(WatcherActionsTest, TheApplicationQuitsWhileItsToolFinishesTheWork)
{
    world.scratch.makeLink("bin/quenchly", testing::RecordedTool::program());
    auto environment = tool.environment("hang");
    environment.merge(std::map<std::string, std::string>{
        {"PATH", world.scratch / "bin"}, {"QT_QPA_PLATFORM", "offscreen"}, {"QUENCHLY_HOME", world.dataHome()}});
    environment.merge(makeSystem(world.home()).environment);
    EXPECT_EQ(
        runToEnd({.executable = QUITTING_APPLICATION_PATH, .arguments = {world.home()}, .environment = environment}),
        0);
    EXPECT_FALSE(tool.hasEnded());
    tool.release();
    EXPECT_TRUE(eventually([&] { return tool.hasEnded(); }));
    EXPECT_EQ(tool.runs(), (Runs{{"disable"}}));
}

TEST_F(WatcherActionsTest, QuittingRightAfterAnActionDoesNotLoseIt)
{
    world.scratch.makeLink("bin/quenchly", testing::RecordedTool::program());
    auto environment = tool.environment();
    environment.merge(std::map<std::string, std::string>{
        {"PATH", world.scratch / "bin"}, {"QT_QPA_PLATFORM", "offscreen"}, {"QUENCHLY_HOME", world.dataHome()}});
    environment.merge(makeSystem(world.home()).environment);
    constexpr std::size_t rounds = 5;
    for (std::size_t round = 1; round <= rounds; ++round) {
        EXPECT_EQ(runToEnd({.executable = QUITTING_APPLICATION_PATH,
                            .arguments = {world.home(), "at-once"},
                            .environment = environment}),
                  0);
        EXPECT_TRUE(eventually([&] { return tool.runs().size() == round; }));
    }
    EXPECT_TRUE(eventually([&] { return tool.events().size() == 2 * rounds; })) << "each ends by itself";
}

TEST_F(WatcherActionsTest, TheStandInCheckerSwitchesProtectionOffAndOn)
{
    world.scratch.makeLink("program/quenchly", QUENCHLY_DEMO_TOOL_PATH);
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.status().managementDisabled);
    for (const bool on : {false, true}) {
        watcher.setProtect(on);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !watcher.protectBusy(); }, testing::patience));
        EXPECT_EQ(watcher.status().managementDisabled, !on);
    }
}

class LiveDataTest : public WatcherActionsTest {
protected:
    static void answerAsOurs(ScriptedServer::Connection& connection)
    {
        connection.request();
        connection.send(ScriptedServer::response("heat-state.json"));
    }

    System systemWithDashboard(const ScriptedServer& server)
    {
        std::filesystem::remove(world.scratch / "program/quenchly");
        System system = systemWithTool();
        system.dashboardPort = server.port();
        return system;
    }
};

TEST_F(LiveDataTest, WithoutAToolTheAddressIsOpenedAllTheSame)
{
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.runLiveData());
    EXPECT_EQ(world.opened->all(), std::vector<std::string>{"http://127.0.0.1:8280"});
    watcher.startLiveData();
    EXPECT_TRUE(eventually([&] { return world.opened->all().size() == 2; }));
}

TEST_F(LiveDataTest, WithoutAToolAnotherUsersPageIsNotOpened)
{
    System system = world.system();
    system.portOwner = [](std::uint16_t) { return PortOwner::anotherUser; };
    const StateWatcher watcher(system);
    EXPECT_FALSE(watcher.runLiveData());
    EXPECT_TRUE(world.opened->all().empty());
    EXPECT_EQ(world.log, std::vector<std::string>{strangersDashboard(8280)});
}

TEST_F(LiveDataTest, AHealthyDashboardIsOpened)
{
    const ScriptedServer server(answerAsOurs);
    const StateWatcher watcher(systemWithDashboard(server));
    EXPECT_TRUE(watcher.runLiveData());
    EXPECT_EQ(world.opened->all(), std::vector<std::string>{dashboardAddress(server.port())});
}

TEST_F(LiveDataTest, InTheBackgroundItIsOpenedToo)
{
    const ScriptedServer server(answerAsOurs);
    StateWatcher watcher(systemWithDashboard(server));
    for (std::size_t times = 1; times <= 2; ++times) {
        EXPECT_TRUE(eventually([&] {
            if (world.opened->all().size() < times)
                watcher.startLiveData();
            return world.opened->all().size() >= times;
        }));
    }
}

TEST_F(LiveDataTest, TheWatcherRefreshesWhileADashboardIsSilent)
{
    const ScriptedServer server([](auto& connection) { connection.closesWithin(10min); });
    StateWatcher watcher(systemWithDashboard(server));
    watcher.startLiveData();
    ASSERT_TRUE(eventually([&] { return server.connections() >= 1; }));
    world.writeState("heat-state.json", overloadState);
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.status().stillOverloaded; }, testing::patience));
    EXPECT_TRUE(eventually([&] { return tool.hasEnded(); }));
    EXPECT_EQ(tool.runs(), (Runs{{"serve"}}));
}

// A dashboard has a time to answer in, for which a machine can be too busy: then these try again.

TEST_F(LiveDataTest, ASecondCallWhileTheFirstIsAtItIsIgnored)
{
    const auto isIgnored = [this] {
        std::promise<void> calledAgain;
        const ScriptedServer server([&, wait = calledAgain.get_future().share()](auto& connection) {
            wait.wait();
            answerAsOurs(connection);
        });
        const std::size_t before = world.opened->all().size();
        StateWatcher watcher(systemWithDashboard(server));
        watcher.startLiveData();
        EXPECT_TRUE(eventually([&] { return server.connections() >= 1; }));
        watcher.startLiveData();
        calledAgain.set_value();
        EXPECT_TRUE(eventually([&] { return world.opened->all().size() > before; }));
        return server.connections() == 1;
    };
    EXPECT_TRUE(eventually(isIgnored));
}

TEST_F(LiveDataTest, QuittingDoesNotWaitForASilentDashboard)
{
    const auto ends = [&] {
        const ScriptedServer server([](auto& connection) { connection.closesWithin(10min); });
        const std::size_t before = tool.runs().size();
        auto watcher = std::make_unique<StateWatcher>(systemWithDashboard(server));
        watcher->startLiveData();
        EXPECT_TRUE(eventually([&] { return server.connections() >= 1; }));
        watcher.reset();
        EXPECT_TRUE(eventually(testing::hasNoChild));
        return tool.runs().size() == before;
    };
    EXPECT_TRUE(eventually(ends)) << "it went on until the tool was started";
    EXPECT_TRUE(world.opened->all().empty());
}

}  // namespace
}  // namespace quenchly
