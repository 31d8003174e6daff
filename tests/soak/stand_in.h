#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quenchly::soak {

/// A folder that the checker looks after.
struct CheckedHome {
    std::filesystem::path home;

    std::filesystem::path dataHome() const { return home / "Library/Application Support/Quenchly"; }
    std::filesystem::path stateFolder() const { return dataHome() / "state"; }
    std::filesystem::path launchAgents() const { return home / "Library/LaunchAgents"; }
    std::filesystem::path agentFile() const { return launchAgents() / "com.brindlemoor.quenchly.plist"; }
};

/// Starts a program as a child of this one, without output and with the environment of this one and `variables`; none
/// when it cannot be started.
std::optional<pid_t> startChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                                const std::vector<std::string>& variables = {});

/// Kills a child and waits for its end. Nothing happens for one that has been waited for.
void killChild(std::optional<pid_t>& child);

/// The stand-in checker's tool on a home folder; none when it cannot be started.
std::optional<pid_t> startStandIn(const CheckedHome& home, const std::vector<std::string>& arguments);

/// The same to its end; true when it succeeded.
bool runStandIn(const CheckedHome& home, const std::vector<std::string>& arguments);

}  // namespace quenchly::soak
