#pragma once

#include <QColor>

/// The colours of the window under the menu bar item, opaque sRGB.
namespace quenchly::PanelColors {

inline constexpr QColor inkText{0xF7, 0xF1, 0xE4};
inline constexpr QColor inkMuted{0xE4, 0xD9, 0xC4};
inline constexpr QColor gold{0xE1, 0x9A, 0x3C};
inline constexpr QColor clay{0xF0, 0x9A, 0x74};
inline constexpr QColor backgroundTop{0x24, 0x1E, 0x17};
inline constexpr QColor backgroundBottom{0x1A, 0x16, 0x11};

}  // namespace quenchly::PanelColors
