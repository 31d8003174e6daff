#pragma once

#include <sys/types.h>

#include <vector>

namespace quenchly::bench {

/// Processes that wait until they are let go.
class Sleepers {
public:
    explicit Sleepers(int count);
    ~Sleepers();
    Sleepers(const Sleepers&) = delete;
    Sleepers& operator=(const Sleepers&) = delete;

    /// Makes each of them run for a moment.
    void wakeAll() const;

private:
    void start();

    int input_[2];
    int ready_[2];
    std::vector<pid_t> ids_;
};

}  // namespace quenchly::bench
