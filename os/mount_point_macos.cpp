#include "mount_point.h"

namespace quenchly {

bool isMountPoint(const std::filesystem::path& folder)
{
    return isOnOtherDeviceThanItsParent(folder);
}

}  // namespace quenchly
