#pragma once

#include <optional>
#include <string>

namespace quenchly {

/// The number that a text is as a whole: optional sign, digits with an optional point, optional exponent, no blanks,
/// finite. Independent of the user's locale.
std::optional<double> decimalNumber(const std::string& text);

}  // namespace quenchly
