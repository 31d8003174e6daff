#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quenchly {

/// A program to start. The child gets a session of its own, so that it outlives this program and its terminal; the null
/// device as its standard streams, so that output that nobody reads never blocks it; none of our other descriptors,
/// signal mask and signal handling.
struct ChildProcess {
    /// A name without a slash is looked for on this program's PATH.
    std::filesystem::path executable;
    std::vector<std::string> arguments;  ///< without the program's own name
    std::map<std::string, std::string> environment;
};

/// This process's environment variables.
std::map<std::string, std::string> environmentVariables();

/// Starts the child with `standardOutput` in place of the null device if it is a descriptor. The caller waits for its
/// end with `exitStatusOf`. None when it could not be started. Any thread.
std::optional<pid_t> start(const ChildProcess& child, int standardOutput = -1);

/// Blocks the calling thread until the child has ended: its exit status, or -1 when a signal ended it.
int exitStatusOf(pid_t child);

/// Starts the child and waits for its end. -1 also when it could not be started.
int runToEnd(const ChildProcess& child);

}  // namespace quenchly
