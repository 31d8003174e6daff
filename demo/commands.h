#pragma once

#include <string>
#include <vector>

namespace quenchly::demo {

/// How a command ended: its exit status, and what it prints: a result when it succeeded, else the reason.
struct Outcome {
    int status = 0;
    std::string text;
};

/// Runs the command that the arguments name. `program` is how the tool was started.
Outcome runCommand(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace quenchly::demo
