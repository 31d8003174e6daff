#include "stat_times.h"

namespace quenchly {

StatTimes timesOf(const struct stat& facts)
{
    return {.modified = facts.st_mtimespec, .changed = facts.st_ctimespec};
}

}  // namespace quenchly
