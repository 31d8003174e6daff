#pragma once

class QPainter;
class QRectF;

/// The application's icon: the gust of wind on a dark square with rounded corners.
namespace quenchly::ApplicationIcon {

/// Paints the icon into a square, crisp at any size.
void paint(QPainter& painter, const QRectF& square);

}  // namespace quenchly::ApplicationIcon
