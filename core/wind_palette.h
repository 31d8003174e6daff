#pragma once

#include <cstdint>

/// The interface colours, 0xRRGGBB in sRGB.
namespace quenchly::WindPalette {

inline constexpr std::uint32_t blue = 0x4E93C6;
inline constexpr std::uint32_t teal = 0x6B8FB5;
inline constexpr std::uint32_t amber = 0xE19A3C;
inline constexpr std::uint32_t clay = 0xF09A74;
inline constexpr std::uint32_t red = 0xD4483C;
inline constexpr std::uint32_t muted = 0x8E8A84;

}  // namespace quenchly::WindPalette
