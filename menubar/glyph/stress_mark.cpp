#include "stress_mark.h"

#include "continuous_rect.h"
#include "wind_glyph.h"

namespace quenchly::StressMark {
namespace {

constexpr double badgeInset = 1.2;
constexpr double badgeRadius = 5.5;
constexpr double glyphInset = 2.6;
constexpr double outlineWidth = 2.6;
constexpr double rimWidth = 0.8;

QRectF insetBy(const QRectF& rect, double inset)
{
    return rect.adjusted(inset, inset, -inset, -inset);
}

QColor rimColor()
{
    return QColor::fromRgbF(0.0F, 0.0F, 0.0F, 0.35F);
}

}  // namespace

void paint(QPainter& painter, const Style& style)
{
    const QRectF badgeRect = insetBy(QRectF(0, 0, side, side), badgeInset);
    const QPainterPath badge = continuousRoundedRect(badgeRect, badgeRadius);
    const QPainterPath glyph = WindGlyph::path(insetBy(badgeRect, glyphInset));

    painter.setRenderHint(QPainter::Antialiasing);
    if (style.hollow) {
        painter.strokePath(badge, QPen(style.fill, outlineWidth));
        painter.strokePath(badge, QPen(rimColor(), rimWidth));
        painter.fillPath(glyph, style.fill);
        return;
    }
    QPainterPath solid = badge;
    solid.addPath(glyph);
    solid.setFillRule(Qt::OddEvenFill);
    painter.fillPath(solid, style.fill);
    painter.strokePath(badge, QPen(rimColor(), rimWidth));
}

}  // namespace quenchly::StressMark
