#pragma once

#include "live_metrics.h"

namespace quenchly::LiveMetricsSampler {

/// The swap in use now; none where the machine has no swap or does not tell.
Swap readSwap();

}  // namespace quenchly::LiveMetricsSampler
