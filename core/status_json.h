#pragma once

#include <string>

#include "quench_status.h"

namespace quenchly {

/// The status as one JSON object on one line: the keys are the fields' names in declaration order, enumerations are
/// their raw texts, absent optionals are null.
std::string statusJson(const QuenchStatus& status);

}  // namespace quenchly
