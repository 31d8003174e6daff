#include "folder_removal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <system_error>

#include "mount_point.h"
#include "path_below.h"
#include "user_home.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

bool isOrHolds(const fs::path& folder, const fs::path& home)
{
    const fs::path homesPlace = withoutLinks(home);
    return folder == homesPlace || isBelow(folder, homesPlace);
}

}  // namespace

std::optional<RemovalRefusal> refusalToRemove(const fs::path& folder, const fs::path& homeFolder)
{
    std::error_code missing;
    if (fs::symlink_status(folder, missing).type() == fs::file_type::not_found)
        return std::nullopt;
    const fs::path place = withoutLinks(folder);
    if (place == "/")
        return RemovalRefusal::root;
    if (isOrHolds(place, homeFolder) || isOrHolds(place, userHomeFolder()))
        return RemovalRefusal::homeFolder;
    struct stat facts {};
    if (stat(place.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode))
        return RemovalRefusal::notAFolder;
    if (isMountPoint(place))
        return RemovalRefusal::mountPoint;
    if (facts.st_uid != geteuid())
        return RemovalRefusal::otherOwner;
    return std::nullopt;
}

std::string_view reason(RemovalRefusal refusal)
{
    switch (refusal) {
        case RemovalRefusal::root:
            return "it is the root of the file system";
        case RemovalRefusal::homeFolder:
            return "it is a home folder or holds one";
        case RemovalRefusal::notAFolder:
            return "it is no folder";
        case RemovalRefusal::mountPoint:
            return "a disk is mounted there";
        case RemovalRefusal::otherOwner:
            break;
    }
    return "it belongs to another user";
}

}  // namespace quenchly
