#pragma once

#include <QPainterPath>
#include <QRectF>

namespace quenchly {

/// A rounded rectangle whose corners bend in gradually, as the system draws its own icons, instead of in a circle's
/// arc. The bend takes up 1.53 radii of each side, so `rect` must be at least 3.06 radii wide and high.
QPainterPath continuousRoundedRect(const QRectF& rect, double radius);

}  // namespace quenchly
