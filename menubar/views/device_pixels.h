#pragma once

#include <QRectF>

class QPainter;

/// Lines that are as sharp at 1.25 and 1.5 times as at whole ones.
namespace quenchly::DevicePixels {

/// The side of one pixel of what is painted on, in points.
double side(const QPainter& painter);

/// The rectangle moved and sized by less than a pixel so that it covers whole ones, and at least one.
QRectF snapped(const QPainter& painter, const QRectF& rectangle);

}  // namespace quenchly::DevicePixels
