#include "trusted_path.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <list>
#include <system_error>

namespace quenchly {
namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;  // as many as the system follows

bool belongsToUserOrRoot(const struct stat& facts)
{
    return facts.st_uid == 0 || facts.st_uid == geteuid();
}

bool othersMayWrite(const struct stat& facts)
{
    return (facts.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

bool othersMayReplaceEntries(const struct stat& facts)
{
    return othersMayWrite(facts) && (facts.st_mode & S_ISVTX) == 0;
}

fs::path stepFrom(const fs::path& folder, const fs::path& name)
{
    if (name.empty() || name == ".")
        return folder;
    return name == ".." ? folder.parent_path() : folder / name;
}

}  // namespace

bool onlyUserCanChange(const fs::path& path)
{
    if (!path.is_absolute())
        return false;
    std::list<fs::path> rest(path.begin(), path.end());
    fs::path reached;
    struct stat facts {};
    for (int links = 0; !rest.empty();) {
        const fs::path next = stepFrom(reached, rest.front());
        rest.pop_front();
        if (lstat(next.c_str(), &facts) != 0 || !belongsToUserOrRoot(facts))
            return false;
        if (S_ISLNK(facts.st_mode)) {
            std::error_code error;
            const fs::path target = fs::read_symlink(next, error);
            if (error || ++links > mostLinks)
                return false;
            rest.insert(rest.begin(), target.begin(), target.end());
            continue;
        }
        if (othersMayReplaceEntries(facts))
            return false;
        reached = next;
    }
    return !othersMayWrite(facts);
}

bool onlyUserCanChange(const fs::path& folder, const fs::path& fileBelow)
{
    fs::path part = folder;
    return onlyUserCanChange(part) && std::ranges::all_of(fileBelow, [&part](const fs::path& name) {
               part /= name;
               return onlyUserCanChange(part);
           });
}

}  // namespace quenchly
