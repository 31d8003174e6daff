#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>
#include <initializer_list>
#include <optional>
#include <string>

#include "text_lines.h"

namespace quenchly {

/// How a text of the panel looks.
struct TextStyle {
    int pixelSize = 15;
    QFont::Weight weight = QFont::Normal;
    QColor ink;
    int mostLines = 1;      ///< what does not fit into them ends in an ellipsis
    double lineHeight = 0;  ///< times `pixelSize`; 0: the typeface's own
};

/// The system's typeface at a size.
QFont panelFont(int pixelSize, QFont::Weight weight = QFont::Normal);

/// Where the upper edge of a line is that stands in the middle of a height.
double topInMiddle(int height, const QFont& font);

class TextLabel;

/// Sets labels of one line on one baseline: the first one's, which stands in the middle of `height`.
void alignBaselines(std::initializer_list<TextLabel*> labels, int height);

/// Lets a layout leave a widget's place free while there is nothing to show in it.
void keepPlaceWhenHidden(QWidget& widget);

/// A tooltip that shows a text as it stands and wraps it; Qt would take one that looks like markup for markup.
QString plainToolTip(const QString& text);

/// A plain text. Where it had to be cut the tooltip has all of it.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(const TextStyle& style, QWidget* parent = nullptr);

    /// An empty text hides the label, so that it takes no room.
    void showText(const std::string& utf8);
    void setInk(const QColor& ink);
    void setMostLines(int mostLines);
    /// Lets the first line stand on a baseline so far below the label's upper edge, and the label be at least `height`
    /// high.
    void standOn(double baseline, int height);
    /// Takes the place of the tooltip that shows what was cut.
    void setFullText(const std::string& utf8);
    /// Joins the tooltip, below what was cut.
    void setMore(const std::string& utf8);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double naturalWidth() const;
    const TextLines::Paragraph& paragraph() const;
    double lineHeight() const;
    /// Of the first line, from the label's upper edge.
    double topOfText() const;
    void updateToolTip();

    TextStyle style_;
    QString fullText_;
    QString more_;
    std::optional<double> baseline_;
    int leastHeight_ = 0;
    mutable TextLines::Line whole_;
    mutable TextLines::Paragraph paragraph_;
};

}  // namespace quenchly
