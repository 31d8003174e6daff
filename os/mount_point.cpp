#include "mount_point.h"

#include <sys/stat.h>

namespace quenchly {

bool isOnOtherDeviceThanItsParent(const std::filesystem::path& folder)
{
    struct stat facts {};
    struct stat parents {};
    return stat(folder.c_str(), &facts) == 0 && stat((folder / "..").c_str(), &parents) == 0 &&
           (facts.st_dev != parents.st_dev || facts.st_ino == parents.st_ino);
}

}  // namespace quenchly
