#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "checker_contract.h"

/// What the files on disk say about the installation. Read on every refresh; any fault of a file counts as "no".
namespace quenchly::ObserveOnly {

inline constexpr std::string_view agentPlistName = CheckerContract::agentFile;

/// The folder of the background job's file when the caller gives none: Library/LaunchAgents of the user database's
/// home folder.
std::filesystem::path defaultLaunchAgentsDir();

/// Whether the background job's file exists; its content does not matter.
bool isAgentInstalled(const std::optional<std::filesystem::path>& launchAgentsDir);

/// Whether the user switched Protection off.
bool isManagementDisabled(const std::filesystem::path& dataHome);

/// Whether the background job's file, read as UTF-8, mentions "--dry-run" anywhere: it only watches then.
bool runsDry(const std::optional<std::filesystem::path>& launchAgentsDir);

struct Folders {
    std::filesystem::path dataHome;
    std::optional<std::filesystem::path> launchAgentsDir;
};
/// Whether the checker only watches: Protection is off, or the background job runs dry. Not used by the application
/// itself, which asks for everything at once.
bool isActive(const Folders& folders);

struct Installation {
    bool managementDisabled = false;
    bool observeOnly = false;
    bool agentInstalled = false;

    bool operator==(const Installation&) const = default;
};
/// All answers at once; each file is read once.
Installation installation(const Folders& folders);

}  // namespace quenchly::ObserveOnly
