#pragma once

#include <cstdint>
#include <string>

#include "checker_contract.h"
#include "commands.h"
#include "state_files.h"

namespace quenchly::demo {

std::string dashboardAddress(std::uint16_t port = CheckerContract::dashboardPort);

/// Shows a data folder's state at the address above, or at the port that QUENCHLY_DASHBOARD_PORT names, 0 being any
/// free one, until the folder is gone. Succeeds at once when the folder is shown there already.
Outcome serve(const StateFiles& files);

}  // namespace quenchly::demo
