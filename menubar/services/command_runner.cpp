#include "command_runner.h"

#include <algorithm>
#include <iterator>

#include "detached_process.h"
#include "executable_file.h"
#include "script_interpreter.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

/// The tool's own folder first, so that a script finds the runtime shipped with it.
std::string searchPath(const CLIRunner& runner)
{
    std::string path = runner.cli.parent_path().string();
    for (const std::filesystem::path& folder : nvmProgramFolders(runner.homeFolder))
        path += ":" + folder.string();
    return path + ":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin";
}

bool canRunByItself(const fs::path& script, const ScriptInterpreter& interpreter)
{
    return interpreter.program.is_absolute() && isExecutableFile(interpreter.program) && isExecutableFile(script);
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
                     .systemNodes = system.nodeRuntimes,
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

std::optional<fs::path> CLIRunner::program() const
{
    if (!isScriptCLI(cli))
        return cli;
    const ScriptInterpreter interpreter = scriptInterpreter(cli);
    if (interpreter.isNode())
        return locateNode({.nearCLI = cli, .homeFolder = homeFolder, .systemNodes = systemNodes});
    return canRunByItself(cli, interpreter) ? std::optional(cli) : std::nullopt;
}

ToolAvailability CLIRunner::availability() const
{
    if (program())
        return ToolAvailability::available;
    return scriptInterpreter(cli).isNode() ? ToolAvailability::interpreterNotFound : ToolAvailability::toolNotFound;
}

std::optional<CLIRunner::Invocation> CLIRunner::processInvocation(const ToolRun& args) const
{
    const auto executable = program();
    if (!executable)
        return std::nullopt;
    Invocation invocation{.executable = *executable, .arguments = {}};
    if (*executable != cli)
        invocation.arguments.push_back(cli);
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
