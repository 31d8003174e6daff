#include "menu_bar_icon.h"

#include <QPainter>

#include "stress_mark.h"
#include "wind_palette.h"

namespace quenchly::MenuBarIcon {

QColor color(QuenchBarTint tint)
{
    return QColor(QRgb(0xFF000000U | WindPalette::ofTint(tint)));
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
