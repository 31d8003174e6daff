#pragma once

#include <filesystem>
#include <optional>

#include "system.h"

namespace quenchly {

/// The checker's command-line tool.
struct CLIRunner {
    std::filesystem::path cli;
    std::filesystem::path dataHome;

    /// Where the tool is: shipped beside this program, in a development tree around the current directory, or on the
    /// search path, in this order. Starts no process.
    static std::optional<std::filesystem::path> locate(const System& system);
};

}  // namespace quenchly
