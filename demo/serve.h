#pragma once

#include "commands.h"
#include "state_files.h"

namespace quenchly::demo {

/// Shows a data folder's state at http://127.0.0.1:8280, or at the port that QUENCHLY_DASHBOARD_PORT names, 0 being any
/// free one, until the folder is gone. Succeeds at once when the folder is shown there already.
Outcome serve(const StateFiles& files);

}  // namespace quenchly::demo
