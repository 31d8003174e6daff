#include "device_pixels.h"

#include <QColor>
#include <QPainter>
#include <QPen>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace quenchly::DevicePixels {

double side(const QPainter& painter)
{
    return 1 / painter.deviceTransform().m22();
}

void drawOutline(QPainter& painter, const QRectF& rectangle, const QColor& color, double radius)
{
    const double width = std::max(1.0, std::round(1 / side(painter))) * side(painter);
    painter.setPen(QPen(color, width));
    painter.drawRoundedRect(snapped(painter, rectangle).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius,
                            radius);
}

QRectF snapped(const QPainter& painter, const QRectF& rectangle)
{
    const QTransform toPixels = painter.deviceTransform();
    const QRectF pixels = toPixels.mapRect(rectangle);
    const QPointF corner(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF end(std::max(corner.x() + 1, std::round(pixels.right())),
                      std::max(corner.y() + 1, std::round(pixels.bottom())));
    return toPixels.inverted().mapRect(QRectF(corner, end));
}

}  // namespace quenchly::DevicePixels
