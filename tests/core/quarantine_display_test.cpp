#include "quarantine_display.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "noon.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace QuarantineDisplay;
using testing::noon;

TEST(QuarantineDisplay, CommandsThatCountAsListedAi)
{
    for (const char* command : {"ollama", "/usr/local/bin/ollama serve", "OLLAMA", "my-ollama-wrapper",
                                "/usr/local/bin/mlx_lm.server --port 8080", "python -m mlx_lm serve", "MLX_LM.SERVER",
                                "lm-studio", "/Applications/LM-Studio", "lmstudio", "LMStudio --headless"})
        EXPECT_TRUE(isAiManagedCommand(command)) << command;
    for (const char* command : {"", "mlx", "mlx-run", "mlx_lm", "mlx_lm.generate", "mlx_lmserve", "lm studio",
                                "llama-server", "olama", "python train.py"})
        EXPECT_FALSE(isAiManagedCommand(command)) << command;
}

TEST(QuarantineDisplay, AgentLabelsThatCountAsListedAi)
{
    for (const char* label : {"com.ollama.ollama", "homebrew.mxcl.OLLAMA", "com.example.mlx", "mlx-run", "ai.lm-studio",
                              "ai.lmstudio.headless", "com.brindlemoor.quenchly.mlx", "com.pellam.cpu-cooldown.ollama"})
        EXPECT_TRUE(isAiManagedLaunchd(label)) << label;
    for (const char* label : {"", "com.brindlemoor.quenchly", "COM.Brindlemoor.Quenchly", "com.pellam.cpu-cooldown",
                              "com.apple.Finder", "lm studio"})
        EXPECT_FALSE(isAiManagedLaunchd(label)) << label;
}

TEST(QuarantineDisplay, AnEntryIsJudgedByItsKindAndItsCommandOrElseItsId)
{
    const struct {
        const char* condition;
        QuarantinedEntry entry;
        bool isListedAi;
    } rows[] = {
        {.condition = "a process", .entry = {.id = "1", .kind = "process", .cmd = "ollama serve"}, .isListedAi = true},
        {.condition = "a process named by its id", .entry = {.id = "ollama", .kind = "process"}, .isListedAi = true},
        {.condition = "the command hides the id",
         .entry = {.id = "ollama", .kind = "process", .cmd = "vim"},
         .isListedAi = false},
        {.condition = "mlx alone is not enough for a process",
         .entry = {.id = "1", .kind = "process", .cmd = "mlx-run"},
         .isListedAi = false},
        {.condition = "mlx is enough for an agent",
         .entry = {.id = "1", .kind = "launchd", .cmd = "mlx-run"},
         .isListedAi = true},
        {.condition = "an agent named by its id", .entry = {.id = "com.ollama", .kind = "launchd"}, .isListedAi = true},
        {.condition = "the checker's own agent",
         .entry = {.id = "com.brindlemoor.quenchly", .kind = "launchd"},
         .isListedAi = false},
        {.condition = "an unknown kind is read as a command",
         .entry = {.id = "1", .kind = "container", .cmd = "ollama"},
         .isListedAi = true},
        {.condition = "the kind is exact",
         .entry = {.id = "1", .kind = "Launchd", .cmd = "mlx-run"},
         .isListedAi = false},
        {.condition = "nothing at all", .entry = {.id = ""}, .isListedAi = false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isAiScoped(row.entry), row.isListedAi) << row.condition;
}

TEST(QuarantineDisplay, EntriesStayVisibleForADayUnlessAcknowledged)
{
    const struct {
        const char* condition;
        QuarantinedEntry entry;
        bool isShown;
    } rows[] = {
        {.condition = "fresh", .entry = {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00Z"}, .isShown = true},
        {.condition = "a day old",
         .entry = {.cmd = "ollama", .quarantinedAt = "2026-02-28T12:00:00Z"},
         .isShown = true},
        {.condition = "a millisecond beyond a day",
         .entry = {.cmd = "ollama", .quarantinedAt = "2026-02-28T11:59:59.999Z"},
         .isShown = false},
        {.condition = "a second beyond a day",
         .entry = {.cmd = "ollama", .quarantinedAt = "2026-02-28T11:59:59Z"},
         .isShown = false},
        {.condition = "stamped in the future",
         .entry = {.cmd = "ollama", .quarantinedAt = "2030-01-01T00:00:00Z"},
         .isShown = true},
        {.condition = "without a zone",
         .entry = {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00"},
         .isShown = true},
        {.condition = "without a time", .entry = {.cmd = "ollama"}, .isShown = false},
        {.condition = "with an unreadable time",
         .entry = {.cmd = "ollama", .quarantinedAt = "yesterday"},
         .isShown = false},
        {.condition = "acknowledged",
         .entry = {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00Z", .acknowledged = true},
         .isShown = false},
        {.condition = "not AI", .entry = {.cmd = "vim", .quarantinedAt = "2026-03-01T11:59:00Z"}, .isShown = false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(visible({row.entry}, noon).size(), row.isShown ? 1u : 0u) << row.condition;
    EXPECT_EQ(retentionHours, 24.0);
}

TEST(QuarantineDisplay, VisibleEntriesKeepTheirOrderAndTheirContent)
{
    const QuarantinedEntry first{
        .id = "b", .cmd = "ollama run", .quarantinedAt = "2026-03-01T11:00:00Z", .reason = "r"};
    const QuarantinedEntry hidden{.id = "x", .cmd = "vim", .quarantinedAt = "2026-03-01T11:00:00Z"};
    const QuarantinedEntry second{.id = "a", .kind = "launchd", .cmd = "mlx", .quarantinedAt = "2026-03-01T08:00:00Z"};
    EXPECT_EQ(visible({first, hidden, second, first}, noon), (std::vector{first, second, first}));
    EXPECT_TRUE(visible({}, noon).empty());
}

TEST(QuarantineDisplay, RowLabels)
{
    const struct {
        QuarantinedEntry entry;
        const char* expected;
    } rows[] = {
        {{.id = "1", .kind = "launchd", .cmd = "com.Ollama.server"}, "ollama"},
        {{.id = "1", .kind = "launchd", .cmd = "com.example.mlx"}, "MLX"},
        {{.id = "1", .kind = "launchd", .cmd = "com.example.mlx-ollama"}, "ollama"},
        {{.id = "1", .kind = "launchd", .cmd = "ai.lm-studio"}, "LM Studio"},
        {{.id = "1", .kind = "launchd", .cmd = "ai.LMStudio.mlx"}, "MLX"},
        {{.id = "1", .kind = "launchd", .cmd = "ai.LMStudio"}, "LM Studio"},
        {{.id = "1", .kind = "launchd", .cmd = "Com.Example.Other"}, "Com.Example.Other"},
        {{.id = "com.ollama", .kind = "launchd"}, "ollama"},
        {{.id = "1", .cmd = "/usr/local/bin/mlx_lm.server --port 8080"}, "mlx_lm.server"},
        {{.id = "1", .cmd = "ollama serve"}, "ollama"},
        {{.id = "1", .cmd = "  /opt/bin/ollama\tserve"}, "ollama"},
        {{.id = "1", .cmd = "/opt/bin/ollama\nserve"}, "ollama"},
        {{.id = "1", .cmd = "/opt/bin/"}, "bin"},
        {{.id = "1", .cmd = "Ollama"}, "Ollama"},
        {{.id = "/opt/bin/ollama serve"}, "ollama"},
        {{.id = "1", .kind = "container", .cmd = "/opt/ollama run"}, "ollama"},
        {{.id = ""}, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(rowLabel(row.entry), row.expected) << row.entry.cmd.utf8() << row.entry.id.utf8();
}

TEST(QuarantineDisplay, ACommandWithoutAWordIsItsOwnPath)
{
    EXPECT_EQ(rowLabel({.id = "1", .cmd = "   "}), "   ");
}

}  // namespace
}  // namespace quenchly
