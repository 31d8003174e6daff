#pragma once

#include <cstdint>

#include "quench_status.h"

/// The interface colours, 0xRRGGBB in sRGB.
namespace quenchly::WindPalette {

inline constexpr std::uint32_t blue = 0x4E93C6;
inline constexpr std::uint32_t teal = 0x6B8FB5;
inline constexpr std::uint32_t amber = 0xE19A3C;
inline constexpr std::uint32_t clay = 0xF09A74;
inline constexpr std::uint32_t red = 0xD4483C;
inline constexpr std::uint32_t muted = 0x8E8A84;

/// The glyph's colour. Grey says that there is nothing to do or nothing known.
std::uint32_t ofTint(QuenchBarTint tint);

}  // namespace quenchly::WindPalette
