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
    return isOnOtherDeviceThanItsParent(folder);
}

}  // namespace quenchly
