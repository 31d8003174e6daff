#include "user_folder.h"

namespace quenchly {

std::filesystem::path UserFolder::in(const System& system) const
{
    const auto value = system.environment.find(variable);
    if (!system.keepsToHomeFolder && value != system.environment.end())
        if (std::filesystem::path folder = value->second; folder.is_absolute())
            return folder;
    return system.homeFolder / inHomeFolder;
}

}  // namespace quenchly
