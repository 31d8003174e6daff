#include "menu_bar_picture.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quenchly {
namespace {

constexpr double barHeight = 28;
constexpr double margin = 10;
constexpr double gap = 6;
constexpr QColor barColor{0x2B, 0x2B, 0x2E};
constexpr QColor textColor{0xF2, 0xF2, 0xF2};

QFont labelFont()
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(13);
    font.setWeight(QFont::DemiBold);
    return font;
}

/// The smallest image that need not be enlarged at `scale`.
const QImage& imageFor(const std::vector<QImage>& images, double scale)
{
    const auto fits = [&](const QImage& image) { return image.devicePixelRatio() >= scale; };
    const auto found = std::find_if(images.begin(), images.end(), fits);
    return found == images.end() ? images.back() : *found;
}

}  // namespace

QImage menuBarPicture(const MenuBarExtraContent& content, double scale)
{
    const QFont font = labelFont();
    const QImage& glyph = imageFor(content.images, scale);
    const QSizeF glyphSize = glyph.deviceIndependentSize();
    const double textWidth = QFontMetricsF(font).horizontalAdvance(content.label);
    const QSizeF size(std::ceil(margin + glyphSize.width() + gap + textWidth + margin), barHeight);

    QImage picture((size * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(barColor);
    QPainter painter(&picture);
    painter.drawImage(QPointF(margin, (barHeight - glyphSize.height()) / 2), glyph);
    painter.setFont(font);
    painter.setPen(textColor);
    const double textLeft = margin + glyphSize.width() + gap;
    painter.drawText(QRectF(textLeft, 0, textWidth + margin, barHeight), Qt::AlignVCenter | Qt::TextSingleLine,
                     content.label);
    return picture;
}

}  // namespace quenchly
