#pragma once

#include "heat_state.h"
#include "instant.h"
#include "state_files.h"

namespace quenchly::demo {

/// The state after a check: the sample judged, the streaks counted on, and the lists kept as they were.
Json checkedState(Json previous, const LastMetrics& metrics, Instant now);

/// The state after a check that found everything as it was.
Json renewedState(Json previous, Instant now);

}  // namespace quenchly::demo
