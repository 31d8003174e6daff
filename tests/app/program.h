#pragma once

#include <QStringList>
#include <map>
#include <string>

namespace quenchly::testing {

/// How a program ended and what it printed.
struct ProgramRun {
    int exitStatus = -1;  ///< -1: it did not start, crashed or did not end in time
    std::string output;
    std::string errors;
};

/// Runs a program to its end, with `variables` added to this process's environment.
ProgramRun runProgram(const QString& program, const QStringList& arguments,
                      const std::map<std::string, std::string>& variables = {});

}  // namespace quenchly::testing
