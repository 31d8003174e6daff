#include "application_icon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRectF>

#include "continuous_rect.h"
#include "wind_glyph.h"

namespace quenchly::ApplicationIcon {
namespace {

// In parts of the icon's side.
constexpr double cornerRadius = 0.2;
constexpr double glyphWidth = 0.65;
constexpr double glyphHeight = 0.75;

constexpr QColor top{0x39, 0x49, 0x5A};
constexpr QColor bottom{0x20, 0x2A, 0x33};
constexpr QColor glyph{0xF7, 0xF1, 0xE4};

}  // namespace

void paint(QPainter& painter, const QRectF& square)
{
    const double side = square.width();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient background(square.topLeft() + QPointF(0.33 * side, 0),
                               square.topLeft() + QPointF(0.67 * side, side));
    background.setColorAt(0, top);
    background.setColorAt(1, bottom);
    painter.fillPath(continuousRoundedRect(square, cornerRadius * side), background);
    QRectF inner(0, 0, glyphWidth * side, glyphHeight * side);
    inner.moveCenter(square.center());
    painter.fillPath(WindGlyph::path(inner), glyph);
    painter.restore();
}

}  // namespace quenchly::ApplicationIcon
