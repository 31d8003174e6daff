#pragma once

#include <filesystem>
#include <string>

#include "file_changes.h"

namespace quenchly::demo {

/// Where the launch agent that runs the checker once a minute is installed.
std::filesystem::path launchAgentPath(const std::filesystem::path& launchAgents);

/// The launch agent that runs `tool` on a data folder.
FileWrite launchAgent(const std::filesystem::path& launchAgents, const std::string& tool,
                      const std::filesystem::path& dataHome);

}  // namespace quenchly::demo
