#pragma once

#include <sys/stat.h>

#include <ctime>

namespace quenchly {

/// When a file was last written, and when anything about it last changed; the systems name the fields differently.
struct StatTimes {
    std::timespec modified;
    std::timespec changed;
};

StatTimes timesOf(const struct stat& facts);

}  // namespace quenchly
