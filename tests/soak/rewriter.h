#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "instant.h"
#include "stand_in.h"

namespace quenchly::soak {

/// A process of its own that spoils and mends what the application reads, lets the stand-in checker run and kills it,
/// and lets AI servers come and go. It does everything at the times at which it is told to, always the same for a seed,
/// about half of it while the caller already goes on.
class Rewriter {
public:
    /// `scratch` is for the rewriter alone.
    Rewriter(const CheckedHome& home, const std::filesystem::path& scratch, std::uint64_t seed);
    /// Ends it with everything that it has started.
    ~Rewriter();
    Rewriter(const Rewriter&) = delete;
    Rewriter& operator=(const Rewriter&) = delete;

    pid_t process() const { return process_; }

    /// One round of changes to everything.
    void spoil(Instant now);
    /// Some of the servers come, go, stop or go on.
    void changeTargets();
    /// Makes every file whole, as in the situation number `situation` of a list without an end, whose last check was at
    /// `lastCheck`; nothing else is left in the folders, and none of the processes.
    void mend(std::size_t situation, Instant lastCheck);
    /// The same, with `count` processes set aside.
    void mendWithSetAside(std::size_t situation, std::size_t count, Instant lastCheck);

private:
    void tell(const std::string& line);

    pid_t process_ = 0;
    int connection_ = -1;
};

/// What the process does: reads commands from standard input until it ends, and answers on standard output.
int runRewriter(const std::filesystem::path& home, const std::filesystem::path& scratch, std::uint64_t seed);

}  // namespace quenchly::soak
