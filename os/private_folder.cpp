#include "private_folder.h"

#include <sys/stat.h>
#include <unistd.h>

namespace quenchly {

bool isPrivateFolder(const std::filesystem::path& folder)
{
    struct stat facts {};
    return lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid() &&
           (facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) == S_IRWXU;
}

bool makePrivateFolder(const std::filesystem::path& folder)
{
    mkdir(folder.c_str(), S_IRWXU);  // what was there before is judged like what is new
    return isPrivateFolder(folder);
}

}  // namespace quenchly
