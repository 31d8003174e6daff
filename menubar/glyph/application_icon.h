#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace quenchly {

/// The application's icon: the gust of wind on a dark plate with continuous corners.
struct ApplicationIconShape {
    QPainterPath plate;
    QLinearGradient shade;
    QPainterPath glyph;
    QColor glyphColor;
};

/// The icon filling a square that is `pixels` wide on the screen: in few pixels the gust takes up more of it.
ApplicationIconShape applicationIconShape(const QRectF& square, double pixels);

void paintApplicationIcon(QPainter& painter, const QRectF& square);

/// The icon at one size and scale; the scale is the image's device pixel ratio.
QImage applicationIcon(int sidePoints, double scale);

/// The icon for windows; drawn anew at whatever size and scale it is shown.
QIcon applicationIcon();

}  // namespace quenchly
