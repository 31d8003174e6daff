#pragma once

#include <QPainterPath>
#include <QRectF>

/// The gust of wind: three filled polygons.
namespace quenchly::WindGlyph {

inline constexpr double designWidth = 22.2;
inline constexpr double designHeight = 28.4;

/// The glyph, as large as fits and centred in `rect`. In an empty rectangle all its points coincide.
QPainterPath path(const QRectF& rect);

}  // namespace quenchly::WindGlyph
