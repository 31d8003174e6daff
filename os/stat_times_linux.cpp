#include "stat_times.h"

namespace quenchly {

StatTimes timesOf(const struct stat& facts)
{
    return {.modified = facts.st_mtim, .changed = facts.st_ctim};
}

}  // namespace quenchly
