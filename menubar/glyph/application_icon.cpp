#include "application_icon.h"

#include <QIconEngine>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "continuous_rect.h"
#include "ink.h"
#include "wind_glyph.h"

namespace quenchly {
namespace {

// Shares of the icon's side.
constexpr double cornerRadius = 0.2;
constexpr double glyphHeight = 0.75;
constexpr double smallGlyphHeight = 0.875;

constexpr double smallPixels = 24;

constexpr double shadeAngle = 160.0;  // degrees clockwise from upwards
constexpr QRgb shadeBegin = 0xFF39495A;
constexpr QRgb shadeEnd = 0xFF202A33;

/// From corner to corner, so that both colours are reached just there.
QLinearGradient shade(const QRectF& square)
{
    const double angle = shadeAngle * std::numbers::pi / 180;
    const QPointF direction(std::sin(angle), -std::cos(angle));
    const double length = square.width() * (std::abs(direction.x()) + std::abs(direction.y()));
    QLinearGradient gradient(square.center() - direction * length / 2, square.center() + direction * length / 2);
    gradient.setColorAt(0, QColor(shadeBegin));
    gradient.setColorAt(1, QColor(shadeEnd));
    return gradient;
}

class ApplicationIconEngine final : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override
    {
        const int side = std::min(rect.width(), rect.height());
        QRectF square(0, 0, side, side);
        square.moveCenter(QRectF(rect).center());
        painter->save();
        paintApplicationIcon(*painter, square);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, picture.rect(), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new ApplicationIconEngine(*this); }
};

}  // namespace

ApplicationIconShape applicationIconShape(const QRectF& square, double pixels)
{
    const double margin = square.height() * (1 - (pixels > smallPixels ? glyphHeight : smallGlyphHeight)) / 2;
    return {.plate = continuousRoundedRect(square, square.width() * cornerRadius),
            .shade = shade(square),
            .glyph = WindGlyph::path(square.adjusted(margin, margin, -margin, -margin)),
            .glyphColor = QColor::fromRgb(inkRgb)};
}

void paintApplicationIcon(QPainter& painter, const QRectF& square)
{
    const double pixels = painter.deviceTransform().mapRect(square).width();
    const ApplicationIconShape shape = applicationIconShape(square, pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape.plate, shape.shade);
    painter.fillPath(shape.glyph, shape.glyphColor);
}

QImage applicationIcon(int sidePoints, double scale)
{
    const int pixels = qRound(sidePoints * scale);
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintApplicationIcon(painter, picture.rect());
    painter.end();
    picture.setDevicePixelRatio(scale);
    return picture;
}

QIcon applicationIcon()
{
    return QIcon(new ApplicationIconEngine);
}

}  // namespace quenchly
