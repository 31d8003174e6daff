#include <fcntl.h>
#include <sys/stat.h>

#include "mount_point.h"

namespace quenchly {

// A part of a disk can be mounted within the same disk: comparing devices does not tell.
bool isMountPoint(const std::filesystem::path& folder)
{
    struct statx facts {};
    return statx(AT_FDCWD, folder.c_str(), 0, 0, &facts) == 0 && (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

}  // namespace quenchly
