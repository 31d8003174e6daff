#include "hairline.h"

#include <QPainter>

#include "device_pixels.h"
#include "panel_colors.h"

namespace quenchly {

Hairline::Hairline(QWidget* parent) : QWidget(parent)
{
    setFixedHeight(1);
}

void Hairline::paintEvent(QPaintEvent*)
{
    constexpr double opacity = 0.6;
    QPainter painter(this);
    const QRectF line(0, 0, width(), DevicePixels::side(painter));
    painter.fillRect(DevicePixels::snapped(painter, line), PanelColors::faded(PanelColors::line, opacity));
}

}  // namespace quenchly
