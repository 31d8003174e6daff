#pragma once

#include <chrono>

#include "instant.h"

namespace quenchly::testing {

/// What the clock says wherever a test scripts it.
inline const Instant noon = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(12);

}  // namespace quenchly::testing
