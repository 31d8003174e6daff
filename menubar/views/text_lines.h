#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <memory>
#include <utility>
#include <vector>

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

/// One line of a widget's text. Setting the text that it has already costs nothing; another one is shaped once, however
/// often it is measured and painted.
class Line {
public:
    Line();
    ~Line();
    Line(Line&&) noexcept;
    Line& operator=(Line&&) noexcept;

    void set(const QString& text, const QFont& font);

    /// In points; 0 before a text is set.
    double width() const;

    /// In the painter's pen; `position` is the upper left corner of the font's own line height.
    void paint(QPainter& painter, QPointF position) const;

private:
    class Shaped;
    std::unique_ptr<const Shaped> shaped_;
};

/// A widget's text in lines, likewise broken anew only on a change. The layout of a window asks for several widths in
/// turn, so that more than one is kept.
class Paragraph {
public:
    void set(const QString& text, const QFont& font, int mostLines);

    const Broken& broken(double width) const;

    /// Ready to paint, for one width at a time.
    const std::vector<Line>& lines(double width) const;

private:
    QString text_;
    QFont font_;
    int mostLines_ = 0;
    mutable std::vector<std::pair<double, Broken>> brokenAt_;
    mutable std::vector<Line> lines_;
    mutable double linesWidth_ = -1;
};

}  // namespace quenchly::TextLines
