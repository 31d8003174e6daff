#include "state_folder.h"

#include <system_error>
#include <vector>

#include "checker_contract.h"
#include "path_below.h"
#include "trusted_path.h"
#include "working_copy.h"

namespace quenchly::StateFileResolver {
namespace {

namespace fs = std::filesystem;

using CheckerContract::heatStateFile;
using CheckerContract::stateFolder;

bool holdsHeatState(const fs::path& folder)
{
    std::error_code ignored;
    return fs::exists(folder / heatStateFile, ignored);
}

bool mayBeUsed(const fs::path& folder, const Surroundings& surroundings)
{
    return !surroundings.keepsToHomeFolder || leadsBelow(surroundings.homeFolder, folder);
}

/// The folder that a variable names, a relative one taken from the current directory.
std::optional<fs::path> folderFromEnvironment(const Surroundings& surroundings)
{
    for (const char* name : CheckerContract::dataFolderVariables) {
        const auto variable = surroundings.env.find(name);
        if (variable == surroundings.env.end() || variable->second.empty())
            continue;
        if (fs::path folder = surroundings.currentDirectory / variable->second; mayBeUsed(folder, surroundings))
            return folder;
    }
    return std::nullopt;
}

std::vector<fs::path> candidates(const Surroundings& surroundings)
{
    std::vector<fs::path> folders;
    if (const auto folder = folderFromEnvironment(surroundings))
        folders.push_back(*folder / stateFolder);
    folders.push_back(surroundings.homeFolder / "Library/Application Support/Quenchly" / stateFolder);
    folders.push_back(surroundings.homeFolder / "Library/Application Support/Quenchly-test" / stateFolder);
    if (const auto folder = devRepoStateDir(surroundings.currentDirectory); folder && mayBeUsed(*folder, surroundings))
        folders.push_back(*folder);
    return folders;
}

Resolution resolutionFor(const fs::path& folder)
{
    return {.dataHome = folder.parent_path(), .state = folder / heatStateFile};
}

}  // namespace

Resolution resolve(const Surroundings& surroundings)
{
    for (const fs::path& folder : candidates(surroundings))
        if (holdsHeatState(folder))
            return resolutionFor(folder);
    return resolutionFor(surroundings.homeFolder / "Library/Application Support/Quenchly" / stateFolder);
}

std::optional<fs::path> devRepoStateDir(const fs::path& currentDirectory)
{
    const auto copy = nearestDirectory(currentDirectory, [](const fs::path& d) {
        return holdsHeatState(d / stateFolder) && onlyUserCanChange(d, fs::path(stateFolder) / heatStateFile);
    });
    return copy ? std::optional(*copy / stateFolder) : std::nullopt;
}

}  // namespace quenchly::StateFileResolver
