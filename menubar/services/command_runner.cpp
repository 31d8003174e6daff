#include "command_runner.h"

#include <algorithm>
#include <iterator>

#include "detached_process.h"

namespace quenchly {
namespace {

/// The tool's own folder first, so that a script finds the runtime shipped with it.
std::string searchPath(const CLIRunner& runner)
{
    std::string path = runner.cli.parent_path().string();
    for (const std::filesystem::path& folder : nvmProgramFolders(runner.homeFolder))
        path += ":" + folder.string();
    return path + ":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin";
}

std::optional<ChildProcess> childOf(const CLIRunner& runner, const ToolRun& args)
{
    const auto invocation = runner.processInvocation(args);
    if (!invocation)
        return std::nullopt;
    return ChildProcess{
        .executable = invocation->executable, .arguments = invocation->arguments, .environment = runner.environment()};
}

}  // namespace

std::optional<CLIRunner> CLIRunner::find(const std::filesystem::path& dataHome, const System& system)
{
    const auto tool = locate(system);
    if (!tool)
        return std::nullopt;
    return CLIRunner{.cli = *tool,
                     .dataHome = dataHome,
                     .homeFolder = system.homeFolder,
                     .inheritedEnvironment = system.environment,
                     .openAddress = system.openAddress,
                     .portOwner = system.portOwner,
                     .log = system.log,
                     .dashboardPort = system.dashboardPort};
}

std::map<std::string, std::string> CLIRunner::environment() const
{
    std::map<std::string, std::string> variables = inheritedEnvironment;
    variables[CheckerContract::dataFolderVariable] = dataHome;
    variables["PATH"] = searchPath(*this);
    return variables;
}

std::optional<CLIRunner::Invocation> CLIRunner::processInvocation(const ToolRun& args) const
{
    if (!isScriptCLI(cli))
        return Invocation{.executable = cli, .arguments = args.arguments()};
    const auto node = locateNode({.nearCLI = cli, .homeFolder = homeFolder});
    if (!node)
        return std::nullopt;
    Invocation invocation{.executable = *node, .arguments = {cli}};
    std::ranges::move(args.arguments(), std::back_inserter(invocation.arguments));
    return invocation;
}

bool CLIRunner::run(const ToolRun& args) const
{
    const auto child = childOf(*this, args);
    return child && startDetached(*child);
}

std::optional<pid_t> CLIRunner::start(const ToolRun& args) const
{
    const auto child = childOf(*this, args);
    return child ? quenchly::start(*child) : std::nullopt;
}

bool CLIRunner::runWaiting(const ToolRun& args) const
{
    const auto process = start(args);
    return process && exitStatusOf(*process) == 0;
}

}  // namespace quenchly
