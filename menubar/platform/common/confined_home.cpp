#include "confined_home.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "path_below.h"

namespace quenchly {
namespace {

/// Each names a folder of the user's in which a child would change something.
void forgetFoldersElsewhere(System& system)
{
    std::vector<std::string> names{"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME",
                                   "QUENCHLY_LAUNCH_AGENTS"};
    std::ranges::copy(CheckerContract::dataFolderVariables, std::back_inserter(names));
    for (const std::string& name : names)
        if (const auto variable = system.environment.find(name);
            variable != system.environment.end() &&
            !leadsBelow(system.homeFolder, system.currentDirectory / variable->second))
            system.environment.erase(variable);
}

}  // namespace

bool leadsOutOfHome(const System& system, const std::filesystem::path& path)
{
    return system.keepsToHomeFolder && !leadsBelow(system.homeFolder, path);
}

void confineToHomeFolder(System& system)
{
    system.environment["HOME"] = system.homeFolder;  // for the checker's tool
    forgetFoldersElsewhere(system);
    // launchd knows a job by its label and its user, whatever the home folder.
    system.launchctl.clear();
    system.moveToTrash = [move = system.moveToTrash, home = withoutLinks(system.homeFolder)](
                             const std::filesystem::path& item, const TrashCompletion& completion) {
        if (isBelow(home, placeOf(item)))
            move(item, completion);
        else
            completion("The program does not belong to this home folder.");
    };
}

}  // namespace quenchly
