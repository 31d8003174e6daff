#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "process_table.h"

namespace quenchly {

/// The process ids that pgrep printed, one on a line, in ascending order.
std::vector<ProcessId> parsePgrepOutput(std::string_view output);

/// The states that `ps -o pid=,stat=` printed. Lines without two fields are skipped.
std::map<ProcessId, std::string> parsePsStates(std::string_view output);

}  // namespace quenchly
