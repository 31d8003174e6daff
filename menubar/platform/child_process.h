#pragma once

#include <filesystem>
#include <map>
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

/// Starts the child and lets it run; it never becomes a zombie. False when it could not be started. Any thread.
bool startDetached(const ChildProcess& child);

/// Blocks the calling thread until the child has ended: its exit status, or -1 when it could not be started or was
/// ended by a signal.
int runToEnd(const ChildProcess& child);

}  // namespace quenchly
