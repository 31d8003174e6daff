#include "path_below.h"

#include <list>
#include <optional>
#include <system_error>

namespace quenchly {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> targetOf(const fs::path& path)
{
    std::error_code error;
    fs::path target = fs::read_symlink(path, error);
    return error ? std::nullopt : std::optional(std::move(target));
}

}  // namespace

// Unlike std::filesystem::weakly_canonical, which leaves a link as it is whose target is missing.
fs::path withoutLinks(const fs::path& path)
{
    int linksLeft = 40;  // more than any system follows
    std::list<fs::path> names(path.begin(), path.end());
    fs::path place;
    while (!names.empty()) {
        const fs::path name = names.front();
        names.pop_front();
        if (name == "..") {
            place = place.parent_path();
            continue;
        }
        if (name.empty() || name == ".")
            continue;
        const std::optional<fs::path> target = linksLeft > 0 ? targetOf(place / name) : std::nullopt;
        if (!target) {
            place /= name;  // the root replaces what was there
            continue;
        }
        --linksLeft;
        names.insert(names.begin(), target->begin(), target->end());
    }
    return place;
}

fs::path placeOf(const fs::path& path)
{
    const fs::path name = path.filename();
    const bool isItsOwnName = !name.empty() && name != "." && name != "..";
    return isItsOwnName ? withoutLinks(path.parent_path()) / name : withoutLinks(path);
}

bool leadsBelow(const fs::path& folder, const fs::path& path)
{
    return isBelow(withoutLinks(folder), withoutLinks(path));
}

}  // namespace quenchly
