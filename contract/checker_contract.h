#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

/// What the application and the checker have to agree on. docs/contract.md explains all of it to those who write a
/// checker.
namespace quenchly::CheckerContract {

/// The variable that names the data folder, to the application and to the tool.
inline constexpr const char* dataFolderVariable = "QUENCHLY_HOME";

/// The variables that the application looks for it in, in this order.
inline constexpr std::array dataFolderVariables{dataFolderVariable, "QUENCHKY_HOME"};

/// The folder in the data folder, and the files in it.
inline constexpr std::string_view stateFolder = "state";
inline constexpr std::string_view heatStateFile = "heat-state.json";
inline constexpr std::string_view managedFile = "managed.json";
inline constexpr std::string_view protectModeFile = "protect-mode.json";
inline constexpr std::string_view throttleFile = "throttle.json";

/// The background job's file, and the name by which launchd knows the job.
inline constexpr std::string_view agentFile = "com.brindlemoor.quenchly.plist";
inline constexpr std::string_view agentLabel = agentFile.substr(0, agentFile.rfind('.'));

/// The tool's own name, by which it is looked for.
inline constexpr const char* toolName = "quenchly";

/// Where on 127.0.0.1 the tool serves its dashboard.
inline constexpr std::uint16_t dashboardPort = 8280;

/// Every key that is looked up in the state files, of whatever object, in the order of the alphabet.
inline constexpr auto keys = std::to_array<std::string_view>({
    "acknowledged", "cmd",           "coolStreak", "cpuCount",   "cpuLoadPct",
    "disabledAt",   "dryRun",        "hot",        "hotStreak",  "id",
    "kind",         "label",         "lastCheck",  "lastCoolAt", "lastHotAt",
    "lastMetrics",  "lastRestoreAt", "level",      "load1",      "memoryReliefTip",
    "menubarLine",  "mode",          "paused",     "pausedAt",   "pid",
    "quarantined",  "quarantinedAt", "reason",     "slowActive", "spectrumClass",
    "story",        "swapCritical",  "swapPct",    "swapUsedMB", "targets",
    "text",         "thermalTruth",  "tone",       "updatedAt",
});

/// One of `keys`; anything else does not compile.
class Key {
public:
    consteval Key(const char* name) : name_(name)
    {
        if (std::ranges::find(keys, std::string_view(name)) == keys.end())
            throw std::logic_error("not a key of the contract");
    }

    constexpr const char* name() const { return name_; }

private:
    const char* name_;
};

}  // namespace quenchly::CheckerContract
