#include "state_folder.h"

#include <system_error>
#include <vector>

#include "working_copy.h"

namespace quenchly::StateFileResolver {
namespace {

namespace fs = std::filesystem;

constexpr const char* heatStateFile = "heat-state.json";

bool holdsHeatState(const fs::path& stateFolder)
{
    std::error_code ignored;
    return fs::exists(stateFolder / heatStateFile, ignored);
}

/// The folder that a variable names, a relative one taken from the current directory.
std::optional<fs::path> folderFromEnvironment(const Surroundings& surroundings)
{
    for (const char* name : {"QUENCHLY_HOME", "QUENCHKY_HOME"}) {
        const auto variable = surroundings.env.find(name);
        if (variable != surroundings.env.end() && !variable->second.empty())
            return surroundings.currentDirectory / variable->second;
    }
    return std::nullopt;
}

std::vector<fs::path> candidates(const Surroundings& surroundings)
{
    std::vector<fs::path> folders;
    if (const auto folder = folderFromEnvironment(surroundings))
        folders.push_back(*folder / "state");
    folders.push_back(surroundings.homeFolder / "Library/Application Support/Quenchly/state");
    folders.push_back(surroundings.homeFolder / "Library/Application Support/Quenchly-test/state");
    if (const auto folder = devRepoStateDir(surroundings.currentDirectory))
        folders.push_back(*folder);
    return folders;
}

Resolution resolutionFor(const fs::path& stateFolder)
{
    return {.dataHome = stateFolder.parent_path(), .state = stateFolder / heatStateFile};
}

}  // namespace

Resolution resolve(const Surroundings& surroundings)
{
    for (const fs::path& folder : candidates(surroundings))
        if (holdsHeatState(folder))
            return resolutionFor(folder);
    return resolutionFor(surroundings.homeFolder / "Library/Application Support/Quenchly/state");
}

std::optional<fs::path> devRepoStateDir(const fs::path& currentDirectory)
{
    const auto copy = nearestDirectory(currentDirectory, [](const fs::path& d) { return holdsHeatState(d / "state"); });
    return copy ? std::optional(*copy / "state") : std::nullopt;
}

}  // namespace quenchly::StateFileResolver
