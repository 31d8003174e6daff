#include "text_label.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

#include "breakable_words.h"

namespace quenchly {
namespace {

/// A wrapped text asks for no more than this; its column decides.
constexpr int widestWrapped = 300;

int roundedUp(double points)
{
    return static_cast<int>(std::ceil(points));
}

}  // namespace

QFont panelFont(int pixelSize, QFont::Weight weight)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

double topInMiddle(int height, const QFont& font)
{
    return (height - QFontMetricsF(font).height()) / 2;
}

void alignBaselines(std::initializer_list<TextLabel*> labels, int height)
{
    const QFont& leading = (*labels.begin())->font();
    const double baseline = topInMiddle(height, leading) + QFontMetricsF(leading).ascent();
    for (TextLabel* label : labels)
        label->standOn(baseline, height);
}

void keepPlaceWhenHidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

QString plainToolTip(const QString& text)
{
    if (text.isEmpty())
        return {};
    const QString breakable = QString::fromStdString(withBreakableWords(withUnbrokenPrefixes(text.toStdString())));
    return QStringLiteral("<p>%1</p>").arg(breakable.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
}

TextLabel::TextLabel(const TextStyle& style, QWidget* parent) : QLabel(parent), style_(style)
{
    setTextFormat(Qt::PlainText);
    setFont(panelFont(style.pixelSize, style.weight));
    const bool wraps = style.mostLines > 1;
    setWordWrap(wraps);  // makes the height depend on the width
    // A fixed height would be the one of the width that the label asks for, not of the one that it gets.
    setSizePolicy(QSizePolicy::Preferred, wraps ? QSizePolicy::Minimum : QSizePolicy::Fixed);
}

void TextLabel::showText(const std::string& utf8)
{
    const QString text = QString::fromStdString(utf8);
    if (this->text() != text) {
        setText(text);
        updateToolTip();
    }
    setVisible(!text.isEmpty());
}

void TextLabel::setInk(const QColor& ink)
{
    if (style_.ink == ink)
        return;
    style_.ink = ink;
    update();
}

void TextLabel::setMostLines(int mostLines)
{
    if (style_.mostLines == mostLines)
        return;
    style_.mostLines = mostLines;
    updateGeometry();
    update();
    updateToolTip();
}

void TextLabel::standOn(double baseline, int height)
{
    baseline_ = baseline;
    leastHeight_ = height;
    updateGeometry();
    update();
}

void TextLabel::setFullText(const std::string& utf8)
{
    fullText_ = QString::fromStdString(utf8);
    updateToolTip();
}

void TextLabel::setMore(const std::string& utf8)
{
    more_ = QString::fromStdString(utf8);
    updateToolTip();
}

QSize TextLabel::sizeHint() const
{
    const int width = roundedUp(naturalWidth());
    if (style_.mostLines == 1)
        return {width, std::max(leastHeight_, roundedUp(lineHeight()))};
    const int wrapped = std::min(width, widestWrapped);
    return {wrapped, heightForWidth(wrapped)};
}

QSize TextLabel::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), 2 * style_.pixelSize), roundedUp(lineHeight())};
}

int TextLabel::heightForWidth(int width) const
{
    return roundedUp(lineHeight() * std::max(1.0, static_cast<double>(paragraph().broken(width).lines.size())));
}

double TextLabel::lineHeight() const
{
    return style_.lineHeight > 0 ? style_.lineHeight * style_.pixelSize : QFontMetricsF(font()).height();
}

double TextLabel::topOfText() const
{
    const QFontMetricsF metrics(font());
    return baseline_ ? *baseline_ - metrics.ascent() : (lineHeight() - metrics.height()) / 2;
}

double TextLabel::naturalWidth() const
{
    whole_.set(text(), font());
    return whole_.width();
}

const TextLines::Paragraph& TextLabel::paragraph() const
{
    paragraph_.set(text(), font(), style_.mostLines);
    return paragraph_;
}

void TextLabel::updateToolTip()
{
    const QString cut = paragraph().broken(width()).cut ? text() : QString();
    QString whole = fullText_.isEmpty() ? cut : fullText_;
    if (!more_.isEmpty())
        whole = whole.isEmpty() ? more_ : whole + u'\n' + more_;
    if (whole == accessibleDescription())
        return;
    setToolTip(plainToolTip(whole));
    setAccessibleDescription(whole);  // else the tooltip's markup would be read out
}

void TextLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    updateToolTip();
}

void TextLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(style_.ink);
    double top = topOfText();
    for (const TextLines::Line& line : paragraph().lines(width())) {
        const double left = alignment().testFlag(Qt::AlignRight) ? width() - line.width() : 0;
        line.paint(painter, {left, top});
        top += lineHeight();
    }
}

}  // namespace quenchly
