#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace quenchly::demo {

using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// The wall clock, to the millisecond.
Instant currentInstant();

/// The instant in UTC, such as "2025-03-02T10:15:00.120Z".
std::string isoText(Instant instant);

/// The instant that such a text tells, to the second; none when it tells none.
std::optional<Instant> instantFrom(const std::string& isoText);

}  // namespace quenchly::demo
