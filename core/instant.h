#pragma once

#include <chrono>

namespace quenchly {

/// A point in time on the wall clock, UTC.
using Instant = std::chrono::sys_time<std::chrono::microseconds>;

/// Seconds from `earlier` to `later`, negative when `later` comes first.
inline double secondsBetween(Instant earlier, Instant later) noexcept
{
    return std::chrono::duration<double>(later - earlier).count();
}

}  // namespace quenchly
