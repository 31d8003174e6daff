#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "instant.h"
#include "text.h"

namespace quenchly::RelativeTime {

/// The instant that an ISO-8601 text names, tried as: internet date-time with fractional seconds, without, and
/// "yyyy-MM-dd'T'HH:mm:ss" without a zone, read as UTC. None when no form fits.
std::optional<Instant> date(std::string_view fromISO);

/// "42s ago", "5m 3s ago" or "2h 5m ago", in English; empty without a readable time or when it lies in the future.
std::string ageAgo(const std::optional<Text>& from, Instant now);

/// "2025-03-02T10:15:00.120Z".
std::string isoText(Instant instant);

}  // namespace quenchly::RelativeTime
