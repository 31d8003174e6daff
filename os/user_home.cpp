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
    return homeFolderNamed(found->pw_dir);
}

std::filesystem::path homeFolderNamed(const char* field)
{
    std::filesystem::path folder = field == nullptr ? "" : field;
    return folder.is_absolute() ? folder : "/";
}

}  // namespace quenchly
