#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "menu_content.h"
#include "noon.h"
#include "shown_language.h"

namespace quenchly::testing {

/// Checked half a minute before noon, nothing eased, nothing set aside.
inline QuenchStatus calmStatus()
{
    return {.icon = QuenchIcon::cool,
            .barTint = QuenchBarTint::cool,
            .headline = "Machine is calm.",
            .detail = "load 20% · swap n/a. Machine is calm.",
            .lastCheckISO = "2026-03-01T11:59:30Z",
            .lastCheckAge = "30s ago",
            .tone = QuenchTone::cool,
            .agentInstalled = true};
}

inline std::vector<TargetRow> idleTargets()
{
    using enum TargetRow::State;
    return {{"Ollama", unknown, "Idle"},
            {"MLX LM Server", unknown, "Idle"},
            {"LM Studio", unknown, "Idle"},
            {"llama.cpp", unknown, "Idle"}};
}

/// Set aside two minutes and five seconds before noon.
inline QuarantinedEntry setAsideProcess(const Text& id, const Text& command = "ollama serve")
{
    return {.id = id, .cmd = command, .quarantinedAt = "2026-03-01T11:57:55Z", .reason = "looped"};
}

/// Content in English for a calm machine with everything set up, until a test changes the parts.
class MenuContentTest : public InEnglish {
protected:
    MenuContent content() const { return menuContent(situation); }

    void notSetUp() { status.agentInstalled = false; }
    void protectionOff() { status.managementDisabled = true; }
    void swapCriticalWithLiveAi()
    {
        status.swapCritical = true;
        targetRows[0].state = TargetRow::State::running;
    }

    QuenchStatus status = calmStatus();
    std::vector<TargetRow> targetRows = idleTargets();
    MenuSituation situation{.status = status,
                            .targetRows = targetRows,
                            .toolAvailability = ToolAvailability::available,
                            .updaterConfigured = true,
                            .version = "1.4.2",
                            .now = noon};
};

}  // namespace quenchly::testing
