#include "confined_home.h"

#include <system_error>

#include "path_below.h"

namespace quenchly {
namespace {

std::filesystem::path withoutLinks(const std::filesystem::path& path)
{
    std::error_code ignored;
    return std::filesystem::weakly_canonical(path, ignored);
}

}  // namespace

void confineToHomeFolder(System& system)
{
    system.environment["HOME"] = system.homeFolder;  // for the checker's tool
    // launchd knows a job by its label and its user, whatever the home folder.
    system.launchctl.clear();
    system.moveToTrash = [move = system.moveToTrash, home = withoutLinks(system.homeFolder)](
                             const std::filesystem::path& item, const TrashCompletion& completion) {
        if (isBelow(home, withoutLinks(item)))
            move(item, completion);
        else
            completion("The program does not belong to this home folder.");
    };
}

}  // namespace quenchly
