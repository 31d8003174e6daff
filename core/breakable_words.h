#pragma once

#include <string>
#include <string_view>

namespace quenchly {

/// The text with invisible places to break a line within words so long that a line between words only would run off
/// the screen.
std::string withBreakableWords(std::string_view utf8);

}  // namespace quenchly
