#include "quarantine_display.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "relative_time.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace QuarantineDisplay;
using namespace std::chrono_literals;

const Instant noon = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + 12h;

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
        bool expected;
    } rows[] = {
        {"a process", {.id = "1", .kind = "process", .cmd = "ollama serve"}, true},
        {"a process named by its id", {.id = "ollama", .kind = "process"}, true},
        {"the command hides the id", {.id = "ollama", .kind = "process", .cmd = "vim"}, false},
        {"mlx alone is not enough for a process", {.id = "1", .kind = "process", .cmd = "mlx-run"}, false},
        {"mlx is enough for an agent", {.id = "1", .kind = "launchd", .cmd = "mlx-run"}, true},
        {"an agent named by its id", {.id = "com.ollama", .kind = "launchd"}, true},
        {"the checker's own agent", {.id = "com.brindlemoor.quenchly", .kind = "launchd"}, false},
        {"an unknown kind is read as a command", {.id = "1", .kind = "container", .cmd = "ollama"}, true},
        {"the kind is exact", {.id = "1", .kind = "Launchd", .cmd = "mlx-run"}, false},
        {"nothing at all", {.id = ""}, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isAiScoped(row.entry), row.expected) << row.condition;
}

TEST(QuarantineDisplay, EntriesStayVisibleForADayUnlessAcknowledged)
{
    const struct {
        const char* condition;
        QuarantinedEntry entry;
        bool expected;
    } rows[] = {
        {"fresh", {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00Z"}, true},
        {"a day old", {.cmd = "ollama", .quarantinedAt = "2026-02-28T12:00:00Z"}, true},
        {"a millisecond beyond a day", {.cmd = "ollama", .quarantinedAt = "2026-02-28T11:59:59.999Z"}, false},
        {"a second beyond a day", {.cmd = "ollama", .quarantinedAt = "2026-02-28T11:59:59Z"}, false},
        {"stamped in the future", {.cmd = "ollama", .quarantinedAt = "2030-01-01T00:00:00Z"}, true},
        {"without a zone", {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00"}, true},
        {"without a time", {.cmd = "ollama"}, false},
        {"with an unreadable time", {.cmd = "ollama", .quarantinedAt = "yesterday"}, false},
        {"acknowledged", {.cmd = "ollama", .quarantinedAt = "2026-03-01T11:59:00Z", .acknowledged = true}, false},
        {"not AI", {.cmd = "vim", .quarantinedAt = "2026-03-01T11:59:00Z"}, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(visible({row.entry}, noon).size(), row.expected ? 1u : 0u) << row.condition;
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
