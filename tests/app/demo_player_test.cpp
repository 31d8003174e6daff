#include "demo_player.h"

#include <gtest/gtest.h>

#include <QTest>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "patience.h"
#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::json;

class DemoPlayerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        system = makeSystem(scratch / "home");
        system.executableFolder = fs::path(QUENCHLY_DEMO_TOOL_PATH).parent_path().parent_path() / "bin";
        DemoPlayer::adapt(system);
        system.environment["QUENCHLY_DEMO_LOG"] = scratch / "log";
    }

    /// Plays much faster than for people.
    void begin(const char* scenario)
    {
        player = std::make_unique<DemoPlayer>(system, QString::fromLatin1(scenario),
                                              DemoPlayer::Pace{.tour = 20ms, .singleScene = 20ms, .checks = 10ms});
        ASSERT_EQ(player->begin().toStdString(), "");
    }

    /// As the panel runs the tool.
    void act(const std::vector<std::string>& arguments) const
    {
        auto variables = system.environment;
        variables.erase("QUENCHLY_DEMO_LOG");
        const auto run = testing::runProgram(QUENCHLY_DEMO_TOOL_PATH, arguments, variables);
        ASSERT_EQ(run.exitStatus, 0) << run.errors;
    }

    fs::path stateFile(const char* name) const
    {
        return system.homeFolder / "Library/Application Support/Quenchly/state" / name;
    }
    json state(const char* name = "heat-state.json") const
    {
        return json::parse(testing::contentOf(stateFile(name)), nullptr, false);
    }
    bool isAgentInstalled() const
    {
        return fs::exists(system.homeFolder / "Library/LaunchAgents/com.brindlemoor.quenchly.plist");
    }

    /// What the player has run so far.
    std::vector<json> runs() const
    {
        std::vector<json> result;
        std::istringstream lines(testing::contentOf(scratch / "log"));
        for (std::string line; std::getline(lines, line);)
            result.push_back(json::parse(line, nullptr, false));
        return result;
    }
    std::ptrdiff_t refreshes() const
    {
        const std::vector<json> all = runs();
        return std::count(all.begin(), all.end(), json{"refresh"});
    }
    bool waitForRefreshes(std::ptrdiff_t count) const
    {
        return QTest::qWaitFor([&] { return refreshes() >= count; }, testing::patience);
    }

    testing::ScratchFolder scratch;
    System system;
    std::unique_ptr<DemoPlayer> player;
};

TEST_F(DemoPlayerTest, ShowsOneScenarioAfterAnother)
{
    begin("");
    EXPECT_EQ(state().at("hot"), false);
    std::set<std::string> played;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            for (const json& run : runs())
                if (run.size() == 2)
                    played.insert(run[1].get<std::string>());
            return played.size() == 10;
        },
        testing::patience));
    EXPECT_EQ(refreshes(), 0);
}

TEST_F(DemoPlayerTest, ASingleScenarioStays)
{
    begin("holding");
    const std::string first = state().at("lastCheck");
    EXPECT_TRUE(QTest::qWaitFor([&] { return state().at("lastCheck") > first; }, testing::patience));
    EXPECT_EQ(state().at("paused").size(), 2U);
}

TEST_F(DemoPlayerTest, ProtectionStaysAsItWasSwitched)
{
    begin("");
    act({"disable"});
    ASSERT_TRUE(waitForRefreshes(3));
    EXPECT_TRUE(state("managed.json").contains("disabledAt"));
    act({"enable"});
    ASSERT_TRUE(waitForRefreshes(refreshes() + 3));
    EXPECT_FALSE(state("managed.json").contains("disabledAt"));
}

TEST_F(DemoPlayerTest, InstalledChecksStayInstalledAndRun)
{
    begin("not-set-up");
    ASSERT_FALSE(isAgentInstalled());
    act({"install-agent"});
    const std::string then = state().at("lastCheck");
    ASSERT_TRUE(waitForRefreshes(3));
    EXPECT_TRUE(isAgentInstalled());
    EXPECT_GT(state().at("lastCheck"), then);
}

TEST_F(DemoPlayerTest, WhatWasAcknowledgedStaysSo)
{
    begin("set-aside");
    std::vector<std::string> ids;
    const json before = state();
    for (const json& entry : before.at("quarantined"))
        ids.push_back(entry.at("id"));
    ASSERT_EQ(ids.size(), 4U);
    for (const std::string& id : ids) {
        act({"quarantine", "ack", id});
        ASSERT_TRUE(waitForRefreshes(refreshes() + 2));
    }
    const json after = state();
    for (const json& entry : after.at("quarantined"))
        EXPECT_EQ(entry.at("acknowledged"), true) << entry;
}

TEST_F(DemoPlayerTest, WhatWasUnloadedStaysUnloaded)
{
    begin("swap-critical");
    ASSERT_TRUE(state().contains("memoryReliefTip"));
    act({"unload-listed"});
    ASSERT_TRUE(waitForRefreshes(3));
    EXPECT_FALSE(state().contains("memoryReliefTip"));
    EXPECT_EQ(state().at("paused"), json::array());
    EXPECT_EQ(state("throttle.json").at("level"), 0);
}

TEST_F(DemoPlayerTest, AStandInThatIsMissingIsReported)
{
    system.executableFolder = scratch / "nowhere";
    for (const char* scenario : {"", "calm"})
        EXPECT_EQ(DemoPlayer(system, QString::fromLatin1(scenario)).begin().toStdString(),
                  "the stand-in checker cannot be run: " + (scratch / "nowhere/quenchly").string());
}

TEST_F(DemoPlayerTest, TheStandInIsFoundInTheBuildTreeTheBundleAndTheInstallation)
{
    const fs::path folder = scratch / "prefix/bin";
    EXPECT_EQ(DemoPlayer::tool(folder), scratch / "prefix/demo/quenchly");
    const fs::path installed = scratch.write(fs::path("prefix") / QUENCHLY_DEMO_FOLDER / "quenchly", "");
    EXPECT_EQ(DemoPlayer::tool(folder), installed);
}

}  // namespace
}  // namespace quenchly
