#include "hairline.h"

#include <QPainter>

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
    painter.fillRect(QRectF(0, 0, width(), 1 / devicePixelRatioF()), PanelColors::faded(PanelColors::line, opacity));
}

}  // namespace quenchly
