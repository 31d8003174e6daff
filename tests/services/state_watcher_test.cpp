#include "state_watcher.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <chrono>

#include "executable_file.h"
#include "menu_bar_icon.h"
#include "own_process.h"
#include "patience.h"
#include "relative_time.h"
#include "scripted_system.h"
#include "verdict_story.h"

namespace quenchly {
namespace {

using testing::ScriptedSystem;
using namespace std::chrono_literals;

constexpr const char* calmState =
    R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":1.6,"cpuCount":8,"swapPct":10,"swapUsedMB":512}})";
constexpr const char* overloadState = R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})";

std::string checkedAt(const char* iso)
{
    return std::string(R"({"lastCheck":")") + iso + R"("})";
}

LastMetrics liveMetrics(bool swapCritical = false)
{
    return {.load1 = 3,
            .cpuCount = 4,
            .cpuLoadPct = 75,
            .swapCritical = swapCritical,
            .menubarLine = "load 75% · swap n/a"};
}

class StateWatcherTest : public ::testing::Test {
protected:
    ScriptedSystem world;
};

TEST_F(StateWatcherTest, AMissingStateFileShowsTheStatusOfAnEmptyStateWithoutALiveSample)
{
    world.sample = liveMetrics();
    const StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::stale);
    EXPECT_EQ(watcher.status().icon, QuenchIcon::stale);
    EXPECT_FALSE(watcher.status().lastMetrics);
    EXPECT_TRUE(world.sampledWith.empty());
    EXPECT_EQ(watcher.dataHome(), world.dataHome());
    EXPECT_EQ(watcher.stateFileURL(), world.dataHome() / "state/heat-state.json");
}

TEST_F(StateWatcherTest, AnUnparsableStateFileShowsTheStatusOfNoStateWithALiveSample)
{
    world.writeState("heat-state.json", R"({"hot": tr)");
    world.sample = liveMetrics();
    const StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::waiting);
    EXPECT_EQ(watcher.status().metricsLine, Text("load 75% · swap n/a"));
}

TEST_F(StateWatcherTest, AStateFileThatCannotBeReadKeepsTheLastStatus)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    const QuenchStatus before = watcher.status();
    const auto file = watcher.stateFileURL();
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    watcher.reload();
    EXPECT_EQ(watcher.status(), before);
    EXPECT_EQ(watcher.status().headline, Text(VerdictStoryLogic::overloadWatching));
}

TEST_F(StateWatcherTest, AStateFileThatIsTooLargeKeepsTheLastStatusForAsLongAsItLies)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    const QuenchStatus before = watcher.status();
    world.scratch.writeSparse("Library/Application Support/Quenchly/state/heat-state.json", "{}", maxFileBytes + 1);
    world.sample = liveMetrics();
    // The second time the file is long at rest and not looked into again.
    for (const auto later : {0h, 24h * 365 * 100, 24h * 365 * 100}) {
        world.now += later;
        watcher.reload();
        EXPECT_EQ(watcher.status(), before);
    }
    world.writeState("heat-state.json", calmState);
    watcher.reload();
    EXPECT_NE(watcher.status(), before);
}

TEST_F(StateWatcherTest, AStateFileThatIsTooLargeFromTheStartShowsTheStatusOfAnEmptyState)
{
    const StateWatcher missing(world.system());
    world.scratch.writeSparse("Library/Application Support/Quenchly/state/heat-state.json", "{}", maxFileBytes + 1);
    world.sample = liveMetrics();
    world.now += 24h * 365 * 100;
    StateWatcher watcher(world.system());
    watcher.reload();
    EXPECT_EQ(watcher.status(), missing.status());
}

TEST_F(StateWatcherTest, AFifoInPlaceOfTheStateFileDoesNotBlock)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    std::filesystem::remove(watcher.stateFileURL());
    world.scratch.makeFifo("Library/Application Support/Quenchly/state/heat-state.json");
    watcher.reload();
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::hotWatch);
}

TEST_F(StateWatcherTest, AFileWithoutPermissionKeepsTheLastStatus)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    world.writeState("heat-state.json", calmState);
    std::filesystem::permissions(watcher.stateFileURL(), std::filesystem::perms::none);
    {
        const testing::OrdinaryUser ordinary;
        ASSERT_TRUE(ordinary.inForce());
        watcher.reload();
    }
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::hotWatch);
}

TEST_F(StateWatcherTest, DeletingTheStateFileShowsTheEmptyStateOnTheNextRefresh)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::hotWatch);
    std::filesystem::remove(watcher.stateFileURL());
    watcher.reload();
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::stale);
    EXPECT_FALSE(watcher.status().stillOverloaded);
}

TEST_F(StateWatcherTest, EveryChangeOfTheStateFileIsSeenEvenWithinOneClockTick)
{
    world.writeState("heat-state.json", calmState);
    StateWatcher watcher(world.system());
    for (int i = 0; i < 50; ++i) {
        const bool hot = i % 2 == 0;
        // In place and of equal size, so that neither inode nor size tells them apart.
        world.scratch.write("Library/Application Support/Quenchly/state/heat-state.json",
                            hot ? R"({"lastCheck":"2026-03-01T11:59:30Z","hot":1})"
                                : R"({"lastCheck":"2026-03-01T11:59:30Z","hot":0})");
        watcher.reload();
        ASSERT_EQ(watcher.status().stillOverloaded, hot) << "after change " << i;
    }
}

TEST_F(StateWatcherTest, AStateThatNeverChangesStillAges)
{
    world.now += 24h * 365 * 100;  // by this clock the file is long at rest
    world.writeState("heat-state.json", checkedAt(RelativeTime::isoText(world.now - 30s).c_str()));
    StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().lastCheckAge, Text("30s ago"));
    world.now += 5s;
    watcher.reload();
    EXPECT_EQ(watcher.status().lastCheckAge, Text("35s ago"));
    world.now += 90s;
    watcher.reload();
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::stale);
}

TEST_F(StateWatcherTest, ALiveSampleReplacesTheFilesMetrics)
{
    world.writeState("heat-state.json", calmState);
    world.sample = liveMetrics(true);
    const StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().lastMetrics, world.sample);
    EXPECT_TRUE(watcher.status().swapCritical);
    EXPECT_EQ(watcher.status().detail, Text("load 75% · swap n/a. Machine is calm. AI keeps running as usual."));
    EXPECT_EQ(world.sampledWith, std::vector<bool>{false});
}

TEST_F(StateWatcherTest, TheSamplerIsToldWhetherSwapIsCritical)
{
    world.writeState("heat-state.json",
                     R"({"lastCheck":"2026-03-01T11:59:30Z","lastMetrics":{"load1":1,"swapCritical":true}})");
    const StateWatcher watcher(world.system());
    EXPECT_EQ(world.sampledWith, std::vector<bool>{true});
    EXPECT_TRUE(watcher.status().swapCritical);
}

TEST_F(StateWatcherTest, WithoutALiveSampleTheFilesMetricsStand)
{
    world.writeState("heat-state.json", calmState);
    const StateWatcher watcher(world.system());
    EXPECT_EQ(watcher.status().metricsLine, Text("load 20% · swap 512 MB (10%)"));
}

TEST_F(StateWatcherTest, TheLaunchAgentsFolderOfTheGivenHomeIsLookedAt)
{
    std::filesystem::remove(world.agentFile());
    const StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.status().agentInstalled);
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::waiting);
}

TEST_F(StateWatcherTest, TwoRefreshesWithTheSameTintMakeTheImageOnce)
{
    world.writeState("heat-state.json", overloadState);
    StateWatcher watcher(world.system());
    const qint64 made = watcher.iconImage().front().cacheKey();
    watcher.reload();
    watcher.reload();
    EXPECT_EQ(watcher.iconImage().front().cacheKey(), made);
    world.writeState("heat-state.json", calmState);
    watcher.reload();
    EXPECT_NE(watcher.iconImage().front().cacheKey(), made);
    EXPECT_EQ(watcher.iconImage(), MenuBarIcon::image(QuenchBarTint::cool));
}

TEST_F(StateWatcherTest, EveryRefreshIsPublishedOnce)
{
    StateWatcher watcher(world.system());
    QSignalSpy published(&watcher, &StateWatcher::published);
    watcher.reload();
    watcher.reload();
    EXPECT_EQ(published.count(), 2);
}

TEST_F(StateWatcherTest, ItRefreshesByItselfWhileTheEventLoopRuns)
{
    StateWatcher watcher(world.system());
    QSignalSpy published(&watcher, &StateWatcher::published);
    world.writeState("heat-state.json", overloadState);
    ASSERT_TRUE(published.wait(testing::patience));
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::hotWatch);
}

struct ProtectModeCase {
    const char* content;
    bool workSavedOn;
};

TEST_F(StateWatcherTest, OnlyTheExactModePauseSavesWork)
{
    constexpr ProtectModeCase cases[] = {
        {.content = R"({"mode":"pause"})", .workSavedOn = true},
        {.content = R"({"mode":"Pause"})", .workSavedOn = false},
        {.content = R"({"mode":"pause "})", .workSavedOn = false},
        {.content = R"({"mode":true})", .workSavedOn = false},
        {.content = R"({"other":"pause"})", .workSavedOn = false},
        {.content = R"(["pause"])", .workSavedOn = false},
        {.content = R"({"mode":"pa)", .workSavedOn = false},
        {.content = "", .workSavedOn = false},
        {.content = "\xFF", .workSavedOn = false},
    };
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.workSavedOn()) << "without a file";
    for (const auto& [content, workSavedOn] : cases) {
        world.writeState("protect-mode.json", R"({"mode":"pause"})");
        watcher.reload();
        ASSERT_TRUE(watcher.workSavedOn());
        world.writeState("protect-mode.json", content);
        watcher.reload();
        EXPECT_EQ(watcher.workSavedOn(), workSavedOn) << content;
    }
}

struct ThrottleCase {
    std::string content;
    bool active = false;
    std::set<Text> labels;
};

TEST_F(StateWatcherTest, ThrottleFileIsReadTolerantly)
{
    const ThrottleCase cases[] = {
        {.content = R"({"level":2,"dryRun":true,"targets":[{"label":"ollama"}]})", .labels = {"ollama"}},
        {.content = R"({"level":1})", .active = true},
        {.content = R"({"level":0.5,"dryRun":false})", .active = true},
        {.content = R"({"level":"2"})"},
        {.content = R"({"level":true})"},
        {.content = R"({"level":-1})"},
        {.content = R"({"level":0,"targets":[{"label":"a"}]})", .labels = {"a"}},
        {.content = R"({"level":1,"dryRun":"true"})", .active = true},
        {.content = R"({"level":1,"dryRun":1})"},
        {.content = R"({"level":1,"dryRun":null})", .active = true},
        {.content = R"({"level":1,"targets":[{"label":"a"},{"name":"b"},{"label":3},{"label":""},{"label":"a"}]})",
         .active = true,
         .labels = {"", "a"}},
        {.content = R"({"level":1,"targets":[{"label":"a"},5]})", .active = true},
        {.content = R"({"level":1,"targets":{"label":"a"}})", .active = true},
        {.content = "{\"level\":1,\"targets\":[{\"label\":\"\u00e9\"},{\"label\":\"e\u0301\"}]}",
         .active = true,
         .labels = {"\u00e9"}},
        {.content = R"([{"level":1}])"},
        {.content = R"({"level":1)"},
        {.content = ""},
    };
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.throttleActive()) << "without a file";
    for (const auto& [content, active, labels] : cases) {
        world.writeState("throttle.json", R"({"level":1,"targets":[{"label":"before"}]})");
        watcher.reload();
        ASSERT_TRUE(watcher.throttleActive());
        world.writeState("throttle.json", content);
        watcher.reload();
        EXPECT_EQ(watcher.throttleActive(), active) << content;
        EXPECT_EQ(watcher.throttledLabels(), labels) << content;
    }
}

struct UnreadableSideFile {
    const char* name;
    std::function<void(const testing::ScratchFolder&, const std::filesystem::path&)> make;
};

TEST_F(StateWatcherTest, SideFilesThatCannotBeReadGiveTheDefaultsAtOnce)
{
    const UnreadableSideFile cases[] = {
        {"a folder", [](const auto& scratch, const auto& path) { scratch.makeFolder(path); }},
        {"a FIFO", [](const auto& scratch, const auto& path) { scratch.makeFifo(path); }},
        {"a link to nothing", [](const auto& scratch, const auto& path) { scratch.makeLink(path, "nowhere"); }},
        {"a hundred megabytes",
         [](const auto& scratch, const auto& path) { scratch.writeSparse(path, "{", 100'000'000); }},
        {"deep nesting",
         [](const auto& scratch, const auto& path) {
             scratch.write(path, R"({"mode":"pause","level":)" + std::string(100'000, '['));
         }},
        {"a nested value",
         [](const auto& scratch, const auto& path) {
             scratch.write(path, R"({"mode":)" + std::string(100'000, '[') + std::string(100'000, ']') +
                                     R"(,"level":)" + std::string(100'000, '[') + std::string(100'000, ']') + "}");
         }},
    };
    for (const auto& [name, make] : cases) {
        for (const char* file : {"protect-mode.json", "throttle.json", "managed.json"}) {
            const auto path = std::filesystem::path("Library/Application Support/Quenchly/state") / file;
            std::filesystem::remove_all(world.scratch / path);
            make(world.scratch, path);
        }
        const StateWatcher watcher(world.system());
        EXPECT_FALSE(watcher.workSavedOn()) << name;
        EXPECT_FALSE(watcher.throttleActive()) << name;
        EXPECT_TRUE(watcher.throttledLabels().empty()) << name;
        EXPECT_FALSE(watcher.status().managementDisabled) << name;
    }
}

TEST_F(StateWatcherTest, ARunningCheckIsSeenUnderEitherCommandLine)
{
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.checkInFlight());
    for (const char* commandLine : {"quenchly.ts check", "MacOS/quenchly check"}) {
        world.processes->matchedPatterns = {commandLine};
        watcher.reload();
        EXPECT_TRUE(watcher.checkInFlight()) << commandLine;
    }
    world.processes->matchedPatterns.clear();
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight());
}

class CheckNowTest : public StateWatcherTest {
protected:
    CheckNowTest() { world.writeState("heat-state.json", checkedAt("2026-03-01T11:59:30Z")); }
};

TEST_F(CheckNowTest, TheSpanLastsNinetyFiveSecondsWithoutANewCheck)
{
    StateWatcher watcher(world.system());
    watcher.beginCheckNow();
    watcher.reload();
    EXPECT_TRUE(watcher.checkInFlight());
    world.now += 95s;
    watcher.reload();
    EXPECT_TRUE(watcher.checkInFlight());
    world.now += 1s;
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight());
    world.now -= 50s;
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight()) << "the span is over for good";
}

TEST_F(CheckNowTest, ANewCheckEndsTheSpan)
{
    StateWatcher watcher(world.system());
    watcher.beginCheckNow();
    world.writeState("heat-state.json", checkedAt("2026-03-01T12:00:01Z"));
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight());
    world.writeState("heat-state.json", checkedAt("2026-03-01T11:59:30Z"));
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight()) << "the span is over for good";
}

TEST_F(CheckNowTest, AnAbsentTimeMatchesAnAbsentTime)
{
    world.writeState("heat-state.json", "{}");
    StateWatcher watcher(world.system());
    watcher.beginCheckNow();
    watcher.reload();
    EXPECT_TRUE(watcher.checkInFlight());
    world.writeState("heat-state.json", checkedAt("2026-03-01T12:00:01Z"));
    watcher.reload();
    EXPECT_FALSE(watcher.checkInFlight());
}

TEST_F(CheckNowTest, ARunningCheckLeavesTheSpanAsItIs)
{
    StateWatcher watcher(world.system());
    watcher.beginCheckNow();
    world.processes->matchedPatterns = {"quenchly.ts check"};
    world.writeState("heat-state.json", checkedAt("2026-03-01T12:00:01Z"));
    watcher.reload();
    EXPECT_TRUE(watcher.checkInFlight());
    world.processes->matchedPatterns.clear();
    world.writeState("heat-state.json", checkedAt("2026-03-01T11:59:30Z"));
    watcher.reload();
    EXPECT_TRUE(watcher.checkInFlight()) << "the span was not closed while the check ran";
}

TEST_F(StateWatcherTest, OpenAtLoginIsAppliedOnceAndThenRead)
{
    {
        const StateWatcher watcher(world.system());
        EXPECT_TRUE(watcher.openAtLogin());
    }
    world.loginItem->now = LoginItem::Status::notRegistered;
    const StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.openAtLogin());
    EXPECT_EQ(world.loginItem->registrations, 1);
}

TEST_F(StateWatcherTest, TheToolIsLookedForOnEveryRefresh)
{
    StateWatcher watcher(world.system());
    EXPECT_FALSE(watcher.cliAvailable());
    const auto tool = world.scratch.write("program/quenchly", "#!/bin/sh\n");
    watcher.reload();
    EXPECT_FALSE(watcher.cliAvailable()) << "it is not executable";
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    watcher.reload();
    EXPECT_TRUE(watcher.cliAvailable());
    std::filesystem::remove(tool);
    watcher.reload();
    EXPECT_FALSE(watcher.cliAvailable());
}

TEST_F(StateWatcherTest, WhatAToolLacksToBeRunIsTold)
{
    using enum ToolAvailability;
    System system = world.system();
    const auto node = world.scratch / "bin/node";
    system.nodeRuntimes = {node};
    StateWatcher watcher(system);
    EXPECT_EQ(watcher.toolAvailability(), toolNotFound);
    for (const char* installed : {"/opt/homebrew/bin/node", "/usr/local/bin/node"})
        if (isExecutableFile(installed))
            GTEST_SKIP() << installed << " runs the script";
    const auto tool = world.scratch.write("program/quenchly", "#!/usr/bin/env node\n");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    watcher.reload();
    EXPECT_EQ(watcher.toolAvailability(), interpreterNotFound);
    EXPECT_TRUE(watcher.cliAvailable()) << "there is one";
    std::filesystem::permissions(world.scratch.write("bin/node", ""), std::filesystem::perms::owner_all);
    watcher.reload();
    EXPECT_EQ(watcher.toolAvailability(), available);
    std::filesystem::remove(node);
    watcher.reload();
    EXPECT_EQ(watcher.toolAvailability(), interpreterNotFound);
    world.scratch.replace("program/quenchly", "#!/bin/sh\n");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    watcher.reload();
    EXPECT_EQ(watcher.toolAvailability(), available);
    world.scratch.replace("program/quenchly", "#!/usr/bin/env node\n");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    watcher.reload();
    EXPECT_EQ(watcher.toolAvailability(), interpreterNotFound) << "another file took its place";
}

TEST_F(StateWatcherTest, TheFolderOfTheEnvironmentIsResolvedOnceAtTheStart)
{
    const auto state = world.scratch.write("elsewhere/state/heat-state.json", overloadState);
    System system = world.system();
    system.environment["QUENCHLY_HOME"] = world.scratch / "elsewhere";
    StateWatcher watcher(std::move(system));
    EXPECT_EQ(watcher.dataHome(), world.scratch / "elsewhere");
    world.writeState("heat-state.json", calmState);
    std::filesystem::remove(state);
    watcher.reload();
    EXPECT_EQ(watcher.stateFileURL(), state);
    EXPECT_EQ(watcher.status().barTint, QuenchBarTint::stale);
}

TEST_F(StateWatcherTest, OpenDescriptorsDoNotGrowWithRefreshes)
{
    world.writeState("heat-state.json", calmState);
    StateWatcher watcher(world.system());
    const int before = testing::openDescriptors();
    for (int i = 0; i < 200; ++i)
        watcher.reload();
    EXPECT_EQ(testing::openDescriptors(), before);
}

}  // namespace
}  // namespace quenchly
