#include "device_pixels.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quenchly::DevicePixels {

double side(const QPainter& painter)
{
    return 1 / painter.deviceTransform().m22();
}

QRectF snapped(const QPainter& painter, const QRectF& rectangle)
{
    const QTransform toPixels = painter.deviceTransform();
    const QRectF pixels = toPixels.mapRect(rectangle);
    const QPointF corner(std::round(pixels.left()), std::round(pixels.top()));
    const QSizeF size(std::max(1.0, std::round(pixels.width())), std::max(1.0, std::round(pixels.height())));
    return toPixels.inverted().mapRect(QRectF(corner, size));
}

}  // namespace quenchly::DevicePixels
