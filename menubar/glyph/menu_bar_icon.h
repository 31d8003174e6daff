#pragma once

#include <QColor>
#include <QImage>
#include <array>
#include <vector>

#include "quench_status.h"

/// The menu bar glyph for each tint.
namespace quenchly::MenuBarIcon {

/// The scales at which the glyph is made: whole and fractional ones, so that no host has to enlarge it.
inline constexpr std::array<double, 4> scales{1.0, 1.5, 2.0, 3.0};

/// Opaque sRGB. Red is never among them.
QColor color(QuenchBarTint tint);

/// The glyph at one scale, 22 points square; the scale is the image's device pixel ratio. It is in full colour and not
/// meant to be recoloured by the menu bar.
QImage image(QuenchBarTint tint, double scale);

/// The glyph at every scale of `scales`, in that order.
std::vector<QImage> image(QuenchBarTint tint);

}  // namespace quenchly::MenuBarIcon
