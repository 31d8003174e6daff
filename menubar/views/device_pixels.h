#pragma once

#include <QRectF>

class QColor;
class QPainter;

/// Lines that are as sharp at 1.25 and 1.5 times as at whole ones.
namespace quenchly::DevicePixels {

/// The side of one pixel of what is painted on, in points.
double side(const QPainter& painter);

/// The rectangle moved and sized by less than a pixel so that it covers whole ones, and at least one.
QRectF snapped(const QPainter& painter, const QRectF& rectangle);

/// Draws a rectangle in the painter's brush with a line of about a point inside its edge.
void drawOutline(QPainter& painter, const QRectF& rectangle, const QColor& color, double radius);

}  // namespace quenchly::DevicePixels
