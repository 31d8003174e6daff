#include "demo_processes.h"

#include <gtest/gtest.h>

#include "target_scanner.h"
#include "test_files.h"

namespace quenchly {
namespace {

class DemoProcessesTest : public ::testing::Test {
protected:
    std::string states(std::vector<PausedEntry> paused = {})
    {
        const auto table = makeDemoProcesses(scratch.path());
        std::string text;
        for (const TargetRow& row : TargetScanner::rows(*table, {.paused = std::move(paused)}))
            text += row.name.utf8() + " " + std::string(row.detail) + "\n";
        return text;
    }

    testing::ScratchFolder scratch;
};

TEST_F(DemoProcessesTest, WithoutAStateNothingRuns)
{
    EXPECT_EQ(states(), "Ollama Idle\nMLX LM Server Idle\nLM Studio Idle\nllama.cpp Idle\n");
}

TEST_F(DemoProcessesTest, WhatTheStateHoldsRuns)
{
    scratch.write("state/heat-state.json", R"({"paused":[{"label":"ollama","pid":1},{"label":"mlx","pid":2}]})");
    EXPECT_EQ(states({{.label = "ollama"}}),
              "Ollama Eased back\nMLX LM Server running\nLM Studio Idle\nllama.cpp Idle\n");
}

TEST_F(DemoProcessesTest, WhatIsEasedOrSetAsideRuns)
{
    scratch.write("state/throttle.json", R"({"level":1,"targets":[{"label":"llama-server"},{"pid":3}]})");
    scratch.write("state/heat-state.json", R"({"quarantined":[{"id":"a","cmd":"/usr/bin/mlx_lm.server --port 1"},)"
                                           R"({"id":"ai.lmstudio.headless","kind":"launchd"}]})");
    EXPECT_EQ(states(), "Ollama Idle\nMLX LM Server running\nLM Studio running\nllama.cpp running\n");
}

TEST_F(DemoProcessesTest, EachScanReadsTheStateAnew)
{
    const auto table = makeDemoProcesses(scratch.path());
    scratch.write("state/heat-state.json", R"({"paused":[{"label":"ollama","pid":1}]})");
    table->beginRefresh();
    EXPECT_EQ(table->named("ollama").size(), 1u);
    scratch.replace("state/heat-state.json", "{}");
    table->beginRefresh();
    EXPECT_TRUE(table->named("ollama").empty());
}

}  // namespace
}  // namespace quenchly
