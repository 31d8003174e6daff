#include "proc_listing.h"

#include <dirent.h>

int listProcOnce(void)
{
    int count = 0;
    DIR* directory = opendir("/proc");
    if (!directory)
        return 0;
    for (const struct dirent* entry = readdir(directory); entry; entry = readdir(directory)) {
        if (entry->d_name[0] >= '0' && entry->d_name[0] <= '9')
            ++count;
    }
    closedir(directory);
    return count;
}
