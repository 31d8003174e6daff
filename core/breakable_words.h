#pragma once

#include <string>
#include <string_view>

namespace quenchly {

/// The text with invisible places to break a line within words so long that a line between words only would run off
/// the screen.
std::string withBreakableWords(std::string_view utf8);

/// The text with invisible marks that keep a line from ending at the hyphen of a short prefix, as in "I-unload". They
/// have no width and need no glyph.
std::string withUnbrokenPrefixes(std::string_view utf8);

}  // namespace quenchly
