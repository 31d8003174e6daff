#pragma once

namespace quenchly {

/// Whether the checker's tool can be run.
enum class ToolAvailability {
    available,
    toolNotFound,         ///< there is no tool, or none that this system can run
    interpreterNotFound,  ///< it is a Node script, and there is no Node runtime
};

}  // namespace quenchly
