#pragma once

#include <cstdint>

namespace quenchly {

/// What is written and drawn on dark: the panel's primary text and the glyph in the application's icon. 0xRRGGBB.
inline constexpr std::uint32_t inkRgb = 0xF7F1E4;

}  // namespace quenchly
