#include "text_lines.h"

#include <QFontMetricsF>
#include <QList>
#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <array>

#include "breakable_words.h"

namespace quenchly::TextLines {
namespace {

constexpr double unlimited = 1e6;
constexpr std::size_t mostWidths = 4;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool hasDigits(const QString& text)
{
    return std::any_of(text.begin(), text.end(), isDigit);
}

/// The room to put on each side of a digit that makes it as wide as the widest. Qt has no switch for tabular figures
/// before 6.7, and not every typeface has them.
class DigitPadding {
public:
    explicit DigitPadding(const QFont& font)
    {
        const QFontMetricsF metrics(font);
        for (char16_t digit = u'0'; digit <= u'9'; ++digit)
            advances_[digit - u'0'] = metrics.horizontalAdvance(QChar(digit));
        widest_ = *std::max_element(advances_.begin(), advances_.end());
    }

    /// Zero beyond the ends of the text, too.
    double at(const QString& text, qsizetype index) const
    {
        if (index >= text.size() || !isDigit(text.at(index)))
            return 0;
        return (widest_ - advances_[text.at(index).unicode() - u'0']) / 2;
    }

private:
    std::array<double, 10> advances_{};
    double widest_ = 0;
};

/// A layout knows room after a character only; what goes before the first one is up to the caller.
QList<QTextLayout::FormatRange> digitSpacing(const QString& text, const QFont& font)
{
    QList<QTextLayout::FormatRange> ranges;
    if (!hasDigits(text))
        return ranges;
    const DigitPadding padding(font);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const double after = padding.at(text, i) + padding.at(text, i + 1);
        if (!isDigit(text.at(i)) && after <= 0)
            continue;
        QTextLayout::FormatRange range{static_cast<int>(i), 1, {}};
        range.format.setFontKerning(false);
        range.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        range.format.setFontLetterSpacing(after);
        ranges.append(range);
    }
    return ranges;
}

void prepare(QTextLayout& layout, const QString& text, const QFont& font)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setFormats(digitSpacing(text, font));
}

double roomBefore(const QString& text, const QFont& font)
{
    return !text.isEmpty() && isDigit(text.front()) ? DigitPadding(font).at(text, 0) : 0;
}

QString elided(const QString& text, const QFont& font, double room)
{
    const QFontMetricsF metrics(font);
    const QString line = metrics.elidedText(text, Qt::ElideRight, room);
    const double excess = width(line, font) - room;
    return excess > 0 ? metrics.elidedText(text, Qt::ElideRight, room - excess) : line;
}

/// The marks only decide where a line may end.
QString withoutJoiners(QString text)
{
    return text.remove(QChar(0x2060));
}

}  // namespace

Broken broken(const QString& text, const QFont& font, double width, int mostLines)
{
    QString separated = QString::fromStdString(withUnbrokenPrefixes(text.toStdString()));
    separated.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(separated, font);
    prepare(layout, separated, font);
    Broken result;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool isLast = result.lines.size() + 1 == mostLines;
        const bool fits = line.textStart() + line.textLength() == separated.size() && line.naturalTextWidth() <= width;
        if (isLast && !fits) {
            const QString rest = separated.mid(line.textStart()).replace(QChar::LineSeparator, u' ');
            result.lines.append(elided(withoutJoiners(rest), font, width));
            result.cut = true;
            break;
        }
        const QString shown = separated.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
        result.lines.append(withoutJoiners(shown));
    }
    layout.endLayout();
    return result;
}

double width(const QString& line, const QFont& font)
{
    Line shaped;
    shaped.set(line, font);
    return shaped.width();
}

class Line::Shaped {
public:
    Shaped(const QString& text, const QFont& font)
        : layout_(text, font), leading_(roomBefore(text, font)), ascent_(QFontMetricsF(font).ascent())
    {
        prepare(layout_, text, font);
        layout_.setCacheEnabled(true);
        layout_.beginLayout();
        line_ = layout_.createLine();
        if (line_.isValid())
            line_.setLineWidth(unlimited);
        layout_.endLayout();
    }

    bool is(const QString& text, const QFont& font) const { return layout_.text() == text && layout_.font() == font; }

    double width() const { return line_.isValid() ? leading_ + line_.naturalTextWidth() : 0; }

    void paint(QPainter& painter, QPointF position) const
    {
        // A character of another typeface makes the line higher; the baseline stays where it is.
        const double above = line_.isValid() ? ascent_ - line_.ascent() : 0;
        layout_.draw(&painter, position + QPointF(leading_, above));
    }

private:
    QTextLayout layout_;
    double leading_;
    double ascent_;
    QTextLine line_;
};

Line::Line() = default;
Line::~Line() = default;
Line::Line(Line&&) noexcept = default;
Line& Line::operator=(Line&&) noexcept = default;

void Line::set(const QString& text, const QFont& font)
{
    if (!shaped_ || !shaped_->is(text, font))
        shaped_ = std::make_unique<const Shaped>(text, font);
}

double Line::width() const
{
    return shaped_ ? shaped_->width() : 0;
}

void Line::paint(QPainter& painter, QPointF position) const
{
    if (shaped_)
        shaped_->paint(painter, position);
}

void Paragraph::set(const QString& text, const QFont& font, int mostLines)
{
    if (text_ == text && font_ == font && mostLines_ == mostLines)
        return;
    text_ = text;
    font_ = font;
    mostLines_ = mostLines;
    brokenAt_.clear();
    linesWidth_ = -1;
}

const Broken& Paragraph::broken(double width) const
{
    const auto known =
        std::find_if(brokenAt_.begin(), brokenAt_.end(), [&](const auto& at) { return at.first == width; });
    if (known != brokenAt_.end())
        return known->second;
    if (brokenAt_.size() == mostWidths)
        brokenAt_.clear();
    return brokenAt_.emplace_back(width, TextLines::broken(text_, font_, width, mostLines_)).second;
}

const std::vector<Line>& Paragraph::lines(double width) const
{
    if (linesWidth_ == width)
        return lines_;
    linesWidth_ = width;
    lines_.clear();
    for (const QString& line : broken(width).lines)
        lines_.emplace_back().set(line, font_);
    return lines_;
}

}  // namespace quenchly::TextLines
