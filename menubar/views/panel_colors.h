#pragma once

#include <QColor>

/// The colours of the panel, opaque sRGB.
namespace quenchly::PanelColors {

inline constexpr QColor line{0x6A, 0x5C, 0x42};
inline constexpr QColor inkText{0xF7, 0xF1, 0xE4};
inline constexpr QColor inkMuted{0xE4, 0xD9, 0xC4};
inline constexpr QColor gold{0xE1, 0x9A, 0x3C};
inline constexpr QColor clay{0xF0, 0x9A, 0x74};
inline constexpr QColor track{0x3A, 0x31, 0x24};
inline constexpr QColor helpSymbol{0x8E, 0x8A, 0x84};
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
