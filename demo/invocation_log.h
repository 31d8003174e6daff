#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quenchly::demo {

/// Appends the arguments as a line of JSON to the file that QUENCHLY_DEMO_LOG names, if it names one; describes a
/// failure in a line.
std::optional<std::string> recordInvocation(const std::vector<std::string>& arguments);

}  // namespace quenchly::demo
