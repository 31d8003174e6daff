#pragma once

#include "heat_state.h"
#include "state_files.h"

namespace quenchly::demo {

/// The figures as the state file holds them.
Json metricsJson(const LastMetrics& metrics);

}  // namespace quenchly::demo
