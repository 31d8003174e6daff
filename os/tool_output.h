#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quenchly {

struct ToolOutput {
    /// -1 when a signal ended the tool.
    int exitStatus = -1;
    std::string standardOutput;
};

/// Runs a tool of the system to its end; the first word of `command` is its full path. Its standard input and standard
/// error are the null device. Nothing when it cannot be started.
std::optional<ToolOutput> runTool(const std::vector<std::string>& command);

}  // namespace quenchly
