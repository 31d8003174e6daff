#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>
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
    /// Takes the place of the tooltip that shows what was cut.
    void setFullText(const std::string& utf8);

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
    void updateToolTip();

    TextStyle style_;
    QString fullText_;
    mutable TextLines::Line whole_;
    mutable TextLines::Paragraph paragraph_;
};

}  // namespace quenchly
