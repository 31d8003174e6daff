#include "confined_home.h"

namespace quenchly {

void confineToHomeFolder(System& system)
{
    system.environment["HOME"] = system.homeFolder;  // for the checker's tool
    // launchd knows a job by its label and its user, whatever the home folder.
    system.launchctl.clear();
    system.moveToTrash = [](const std::filesystem::path&, const TrashCompletion& completion) {
        completion("The program does not belong to this home folder.");
    };
}

}  // namespace quenchly
