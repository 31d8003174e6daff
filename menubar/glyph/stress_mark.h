#pragma once

#include <QColor>
#include <QPainter>

/// The square with the gust of wind in it: solid with the glyph cut out, or hollow with the glyph filled in.
namespace quenchly::StressMark {

/// Side of the mark in points.
inline constexpr double side = 22.0;

struct Style {
    bool hollow = false;
    QColor fill;
};

/// Paints the mark into the square from the origin to (`side`, `side`).
void paint(QPainter& painter, const Style& style);

}  // namespace quenchly::StressMark
