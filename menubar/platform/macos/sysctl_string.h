#pragma once

#include <optional>
#include <string>

namespace quenchly {

/// The text of a system control, up to its first NUL; none when it cannot be read.
std::optional<std::string> sysctlString(const std::string& name);

}  // namespace quenchly
