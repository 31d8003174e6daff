#include "command_runner.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

#include "detached_process.h"
#include "working_copy.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

constexpr const char* toolName = "quenchly";

std::optional<fs::path> findInDevelopmentTree(const fs::path& currentDirectory)
{
    const auto script = [](const fs::path& directory) { return directory / "dist/quenchly.mjs"; };
    const auto tree =
        nearestDirectory(currentDirectory, [&](const fs::path& d) { return CLIRunner::isUsable(script(d)); });
    return tree ? std::optional(script(*tree)) : std::nullopt;
}

/// The first hit among the folders of PATH, as the shell would find it; an empty one is the current directory.
std::optional<fs::path> findOnPath(const System& system)
{
    const auto variable = system.environment.find("PATH");
    if (variable == system.environment.end())
        return std::nullopt;
    std::string_view rest = variable->second;
    while (true) {
        const auto colon = rest.find(':');
        fs::path tool = system.currentDirectory / rest.substr(0, colon) / toolName;
        if (CLIRunner::isUsable(tool))
            return tool;
        if (colon == std::string_view::npos)
            return std::nullopt;
        rest.remove_prefix(colon + 1);
    }
}

fs::path nvmVersionsFolder(const fs::path& homeFolder)
{
    return homeFolder / ".nvm/versions/node";
}

/// In ascending order of their bytes.
std::vector<std::string> nvmVersions(const fs::path& homeFolder)
{
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entry(nvmVersionsFolder(homeFolder), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::ranges::sort(names);
    return names;
}

/// The tool's own folder first, so that a script finds the runtime shipped with it.
std::string searchPath(const CLIRunner& runner)
{
    std::string path = runner.cli.parent_path().string();
    for (const std::string& version : nvmVersions(runner.homeFolder))
        path += ":" + (nvmVersionsFolder(runner.homeFolder) / version / "bin").string();
    return path + ":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin";
}

std::optional<ChildProcess> childOf(const CLIRunner& runner, const CLIRunner::Arguments& args)
{
    const auto invocation = runner.processInvocation(args);
    if (!invocation)
        return std::nullopt;
    return ChildProcess{
        .executable = invocation->executable, .arguments = invocation->arguments, .environment = runner.environment()};
}

}  // namespace

std::optional<fs::path> CLIRunner::locate(const System& system)
{
    if (const fs::path shipped = system.executableFolder / toolName; isUsable(shipped))
        return shipped;
    if (auto script = findInDevelopmentTree(system.currentDirectory))
        return script;
    return findOnPath(system);
}

bool CLIRunner::isUsable(const fs::path& file)
{
    std::error_code ignored;
    return fs::is_regular_file(file, ignored) && access(file.c_str(), X_OK) == 0;
}

std::optional<CLIRunner> CLIRunner::find(const fs::path& dataHome, const System& system)
{
    const auto tool = locate(system);
    if (!tool)
        return std::nullopt;
    return CLIRunner{.cli = *tool,
                     .dataHome = dataHome,
                     .homeFolder = system.homeFolder,
                     .inheritedEnvironment = system.environment,
                     .openAddress = system.openAddress,
                     .dashboardPort = system.dashboardPort};
}

bool CLIRunner::isScriptCLI(const fs::path& file)
{
    std::array<char, 2> start{};
    std::ifstream(file, std::ios::binary).read(start.data(), start.size());
    return start == std::array{'#', '!'};
}

std::vector<fs::path> CLIRunner::nodeCandidates(const NodeSearch& search)
{
    const fs::path beside = search.nearCLI.parent_path();
    std::vector<fs::path> candidates{beside / "node", beside / "qn-node", "/opt/homebrew/bin/node",
                                     "/usr/local/bin/node"};
    const auto versions = nvmVersions(search.homeFolder);
    for (auto version = versions.rbegin(); version != versions.rend(); ++version)
        candidates.push_back(nvmVersionsFolder(search.homeFolder) / *version / "bin/node");
    candidates.push_back(search.homeFolder / "local/node24/bin/node");
    return candidates;
}

std::optional<fs::path> CLIRunner::locateNode(const NodeSearch& search)
{
    const auto candidates = nodeCandidates(search);
    const auto node = std::ranges::find_if(candidates, isUsable);
    return node == candidates.end() ? std::nullopt : std::optional(*node);
}

std::map<std::string, std::string> CLIRunner::environment() const
{
    std::map<std::string, std::string> variables = inheritedEnvironment;
    variables["QUENCHLY_HOME"] = dataHome;
    variables["PATH"] = searchPath(*this);
    return variables;
}

std::optional<CLIRunner::Invocation> CLIRunner::processInvocation(const Arguments& args) const
{
    if (!isScriptCLI(cli))
        return Invocation{.executable = cli, .arguments = args};
    const auto node = locateNode({.nearCLI = cli, .homeFolder = homeFolder});
    if (!node)
        return std::nullopt;
    Invocation invocation{.executable = *node, .arguments = {cli}};
    invocation.arguments.insert(invocation.arguments.end(), args.begin(), args.end());
    return invocation;
}

bool CLIRunner::run(const Arguments& args) const
{
    const auto child = childOf(*this, args);
    return child && startDetached(*child);
}

bool CLIRunner::runWaiting(const Arguments& args) const
{
    const auto child = childOf(*this, args);
    return child && runToEnd(*child) == 0;
}

}  // namespace quenchly
