#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <QStringList>

class QPainter;

/// Plain text set in lines, with digits of equal width in every typeface.
namespace quenchly::TextLines {

struct Broken {
    QStringList lines;
    bool cut = false;  ///< the last line ends in an ellipsis, because not everything fits
};

/// Breaks a text between words, or within one that is too long for a line, at line ends and into at most `mostLines`.
Broken broken(const QString& text, const QFont& font, double width, int mostLines);

/// In points.
double width(const QString& line, const QFont& font);

/// Paints one line in the painter's pen; `position` is the upper left corner of the font's own line height.
void paint(QPainter& painter, QPointF position, const QString& line, const QFont& font);

}  // namespace quenchly::TextLines
