#include "menu_bar_icon.h"

#include <QPainter>

#include "stress_mark.h"
#include "wind_palette.h"

namespace quenchly::MenuBarIcon {
namespace {

constexpr std::uint32_t paletteColor(QuenchBarTint tint)
{
    switch (tint) {
        case QuenchBarTint::cool:
            return WindPalette::blue;
        case QuenchBarTint::protect:
            return WindPalette::amber;
        case QuenchBarTint::hotWatch:
            return WindPalette::teal;
        case QuenchBarTint::falseHeat:
            return WindPalette::muted;
        case QuenchBarTint::watch:
            return WindPalette::muted;
        case QuenchBarTint::unprotected:
            return WindPalette::clay;
        case QuenchBarTint::stale:
            return WindPalette::muted;
        case QuenchBarTint::waiting:
            return WindPalette::muted;
        case QuenchBarTint::spectrumLoop:
            return WindPalette::amber;
        case QuenchBarTint::spectrumTrend:
            return WindPalette::teal;
        case QuenchBarTint::spectrumFlat:
            return WindPalette::blue;
        case QuenchBarTint::spectrumInsufficient:
            return WindPalette::muted;
    }
    return WindPalette::muted;
}

}  // namespace

QColor color(QuenchBarTint tint)
{
    return QColor(QRgb(0xFF000000U | paletteColor(tint)));
}

QImage image(QuenchBarTint tint, double scale)
{
    const int pixels = qRound(StressMark::side * scale);
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    StressMark::paint(painter, {.hollow = tint == QuenchBarTint::unprotected, .fill = color(tint)});
    painter.end();
    picture.setDevicePixelRatio(scale);
    return picture;
}

std::vector<QImage> image(QuenchBarTint tint)
{
    std::vector<QImage> pictures;
    pictures.reserve(scales.size());
    for (const double scale : scales)
        pictures.push_back(image(tint, scale));
    return pictures;
}

}  // namespace quenchly::MenuBarIcon
