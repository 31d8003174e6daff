#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "file_changes.h"
#include "instant.h"

namespace quenchly::demo {

/// The names of the situations that can be played.
std::vector<std::string_view> scenarioNames();

/// Where a scenario is played, and when.
struct Stage {
    std::filesystem::path dataHome;
    std::filesystem::path launchAgents;
    std::string tool;
    Instant now;
};

/// The files of a situation; none when there is no such scenario.
std::optional<FileChanges> scenario(std::string_view name, const Stage& stage);

}  // namespace quenchly::demo
