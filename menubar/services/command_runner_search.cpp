#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include "checker_contract.h"
#include "command_runner.h"
#include "executable_file.h"
#include "trusted_path.h"
#include "working_copy.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> findInDevelopmentTree(const fs::path& currentDirectory)
{
    const fs::path script = "dist/quenchly.mjs";
    const auto tree = nearestDirectory(currentDirectory, [&script](const fs::path& directory) {
        return isExecutableFile(directory / script) && onlyUserCanChange(directory, script);
    });
    return tree ? std::optional(*tree / script) : std::nullopt;
}

/// The first hit among the folders of PATH, as the shell would find it; an empty one is the current directory. What
/// lies near that has to be safe from other users.
std::optional<fs::path> findOnPath(const System& system)
{
    const auto variable = system.environment.find("PATH");
    if (variable == system.environment.end())
        return std::nullopt;
    std::string_view rest = variable->second;
    while (true) {
        const auto colon = rest.find(':');
        const fs::path entry = rest.substr(0, colon);
        const fs::path folder = system.currentDirectory / entry;
        if (isExecutableFile(folder / CheckerContract::toolName) &&
            (entry.is_absolute() || onlyUserCanChange(folder, CheckerContract::toolName)))
            return folder / CheckerContract::toolName;
        if (colon == std::string_view::npos)
            return std::nullopt;
        rest.remove_prefix(colon + 1);
    }
}

}  // namespace

std::optional<fs::path> CLIRunner::locate(const System& system)
{
    if (const fs::path shipped = system.executableFolder / CheckerContract::toolName; isExecutableFile(shipped))
        return shipped;
    if (auto script = findInDevelopmentTree(system.currentDirectory))
        return script;
    return findOnPath(system);
}

bool CLIRunner::isScriptCLI(const fs::path& file)
{
    std::array<char, 2> start{};
    std::ifstream(file, std::ios::binary).read(start.data(), start.size());
    return start == std::array{'#', '!'};
}

std::optional<fs::path> CLIRunner::locateNode(const NodeSearch& search)
{
    const auto candidates = nodeCandidates(search);
    const auto node = std::ranges::find_if(candidates, isExecutableFile);
    return node == candidates.end() ? std::nullopt : std::optional(*node);
}

}  // namespace quenchly
