#pragma once

#include <QColor>
#include <cstdint>

#include "ink.h"
#include "wind_palette.h"

/// The colours of the panel, opaque sRGB.
namespace quenchly::PanelColors {

/// Of 0xRRGGBB.
constexpr QColor opaque(std::uint32_t rgb)
{
    return {static_cast<int>(rgb >> 16 & 0xFF), static_cast<int>(rgb >> 8 & 0xFF), static_cast<int>(rgb & 0xFF)};
}

inline constexpr QColor line{0x6A, 0x5C, 0x42};
inline constexpr QColor inkText = opaque(inkRgb);
inline constexpr QColor inkMuted{0xE4, 0xD9, 0xC4};
inline constexpr QColor gold = opaque(WindPalette::amber);
inline constexpr QColor clay = opaque(WindPalette::clay);
/// Around what can be pressed and what lies above the panel: three times as light as either.
inline constexpr QColor outline{0xA0, 0x70, 0x30};
inline constexpr QColor track{0x3A, 0x31, 0x24};
inline constexpr QColor helpSymbol = opaque(WindPalette::muted);
inline constexpr QColor parchment{0x1C, 0x18, 0x13};
inline constexpr QColor backgroundTop{0x24, 0x1E, 0x17};
inline constexpr QColor backgroundBottom{0x1A, 0x16, 0x11};

/// Of a button that cannot be pressed.
inline constexpr double disabledOpacity = 0.5;

/// The same colour, so opaque.
inline QColor faded(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

}  // namespace quenchly::PanelColors
