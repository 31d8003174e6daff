#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "node_runtimes.h"
#include "system.h"
#include "tool_availability.h"
#include "tool_command.h"

namespace quenchly {

/// The checker's command-line tool: how it is found, started and given its surroundings. What it prints is never read:
/// results come back through the state files. A plain value, free to move to another thread and to outlive the System
/// that it was made from.
struct CLIRunner {
    using Arguments = std::vector<std::string>;

    struct Invocation {
        std::filesystem::path executable;
        Arguments arguments;

        bool operator==(const Invocation&) const = default;
    };

    std::filesystem::path cli;  ///< a native program, a Node script, or a script with another interpreter
    std::filesystem::path dataHome;
    std::filesystem::path homeFolder;
    std::vector<std::filesystem::path> systemNodes;  ///< see System
    std::map<std::string, std::string> inheritedEnvironment;
    std::function<bool(const std::string& address)> openAddress;
    std::function<PortOwner(std::uint16_t port)> portOwner;
    std::function<void(const std::string& line)> log;
    std::uint16_t dashboardPort = CheckerContract::dashboardPort;

    /// Where the tool is: shipped beside this program, in a development tree around the current directory, or on the
    /// search path, in this order. Near the current directory only what no other user can change counts. Starts no
    /// process.
    static std::optional<std::filesystem::path> locate(const System& system);

    /// The runner of the tool that `locate` finds, if it finds one.
    static std::optional<CLIRunner> find(const std::filesystem::path& dataHome, const System& system);

    /// Whether the file begins with "#!"; false for one that cannot be read.
    static bool isScriptCLI(const std::filesystem::path& file);

    /// The first of `nodeCandidates` that can be run.
    static std::optional<std::filesystem::path> locateNode(const NodeSearch& search);

    /// The child's environment. Its PATH names the versions of nvm in the order of `nvmProgramFolders`.
    std::map<std::string, std::string> environment() const;

    /// The program that is started: the tool itself, also where it is a script whose first line names another
    /// interpreter than Node; else a Node runtime. None when there is none.
    std::optional<std::filesystem::path> program() const;

    /// Why `program` is none, if it is.
    ToolAvailability availability() const;

    /// None when `program` is none.
    std::optional<Invocation> processInvocation(const ToolRun& args) const;

    /// Starts the tool, whose end the caller waits for with `exitStatusOf`. None when it could not be started.
    std::optional<pid_t> start(const ToolRun& args) const;

    /// Starts the tool and leaves it running, beyond the end of this program. False when it could not be started.
    bool run(const ToolRun& args) const;

    /// Blocks until the tool has ended, without a limit; true when its exit status is 0. On the interface
    /// thread only where everything else is to wait, as in the uninstall.
    bool runWaiting(const ToolRun& args) const;

    /// Whether a dashboard of ours answers; threads and limits are those of `dashboardAnswers`.
    static bool dashboardLooksHealthy(std::uint16_t port);

    /// Opens the dashboard in the browser, after starting it if none answers. Blocks for up to ten seconds; false when
    /// none answered within eight seconds of starting it, or when the one that answers is another user's, which is
    /// logged. Threads as for `dashboardAnswers`.
    bool openDashboard() const;
};

}  // namespace quenchly
