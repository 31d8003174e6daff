#pragma once

#include <sys/types.h>

#include <cstdint>

namespace quenchly::bench {

/// What the system counts for one running process.
struct ProcessFacts {
    double processorMilliseconds = 0;  ///< over all its threads, ended ones included
    std::int64_t waits = 0;            ///< how often its threads went to sleep by themselves
    std::int64_t writeCalls = 0;
    std::int64_t bytesToDisk = 0;
    std::int64_t childFaults = 0;  ///< page faults of ended children: above zero as soon as there was one
    int children = 0;
    int threads = 0;
    int descriptors = 0;
};

struct Memory {
    std::int64_t proportionalKiB = 0;
    std::int64_t privateKiB = 0;  ///< written by it and shared with nobody, whoever else runs
};

/// How many processes and threads the machine has started so far.
std::int64_t startedOnMachine();

ProcessFacts factsOf(pid_t process);
Memory memoryOf(pid_t process);

}  // namespace quenchly::bench
