#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quenchly::soak {

/// What this process holds at the moment.
struct OwnFacts {
    std::vector<std::string> descriptors;  ///< what each leads to, without its numbers; in the order of the texts
    int threads = 0;
    std::int64_t liveBytes = 0;  ///< allocated and not freed; 0 where an allocator that counts differently is at work
    std::int64_t privateBytes = 0;
};
OwnFacts ownFacts();

struct OwnChild {
    pid_t process = 0;
    bool isZombie = false;
};
std::vector<OwnChild> ownChildren();

/// Kills a child of this process that another thread may be waiting for; one that is gone is left alone.
void killOwnChild(pid_t process);

}  // namespace quenchly::soak
