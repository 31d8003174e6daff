#pragma once

#include "instant.h"

namespace quenchly {

/// The wall clock.
Instant currentInstant();

}  // namespace quenchly
