#pragma once

#include <optional>

#include "live_metrics.h"

namespace quenchly::LiveMetricsSampler {

/// Reads the machine now; none when the load average cannot be read. `swapCritical` can be raised by the reading and is
/// never lowered. On macOS a child process is run and waited for.
std::optional<LastMetrics> sample(bool swapCritical);

}  // namespace quenchly::LiveMetricsSampler
