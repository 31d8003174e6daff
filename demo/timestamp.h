#pragma once

#include <chrono>
#include <string>

namespace quenchly::demo {

using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// The wall clock, to the millisecond.
Instant currentInstant();

/// The instant in UTC, such as "2025-03-02T10:15:00.120Z".
std::string isoText(Instant instant);

}  // namespace quenchly::demo
