#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quenchly::testing {

/// How a program ended and what it printed.
struct ProgramRun {
    int exitStatus = -1;  ///< -1: it did not start, crashed or hung
    std::string output;
    std::string errors;
};

/// Runs a program to its end, with `variables` added to this process's environment.
ProgramRun runProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& variables = {});

/// Whether CMake found the program whose path it was asked for.
bool isInstalled(std::string_view path);

}  // namespace quenchly::testing
