#include <fcntl.h>
#include <sys/stat.h>

#include "mount_point.h"

namespace quenchly {

// A part of a disk can be mounted within the same disk: comparing devices does not tell.
bool isMountPoint(const std::filesystem::path& folder)
{
    struct statx facts {};
    if (statx(AT_FDCWD, folder.c_str(), 0, 0, &facts) == 0 && (facts.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    // An old kernel or a sandbox does not say.
    struct stat own {};
    struct stat parents {};
    return stat(folder.c_str(), &own) == 0 && stat((folder / "..").c_str(), &parents) == 0 &&
           (own.st_dev != parents.st_dev || own.st_ino == parents.st_ino);
}

}  // namespace quenchly
