#include "user_home.h"

#include <pwd.h>
#include <unistd.h>

#include <string>

namespace quenchly {

std::filesystem::path userHomeFolder()
{
    std::string buffer(16384, '\0');
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return "/";
    return found->pw_dir;
}

}  // namespace quenchly
