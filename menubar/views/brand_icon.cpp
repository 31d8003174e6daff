#include "brand_icon.h"

#include <QPainter>

#include "application_icon.h"
#include "continuous_rect.h"
#include "menu_bar_icon.h"
#include "panel_colors.h"
#include "panel_metrics.h"

namespace quenchly {
namespace {

using PanelMetrics::headerIcon;
using PanelMetrics::headerStatusDot;

constexpr double iconRadius = 8;
constexpr double outlineWidth = 0.5;
constexpr double outlineOpacity = 0.65;
constexpr double ringWidth = 1.5;
constexpr int outward = 3;
/// The ring around the dot reaches beyond it.
constexpr int side = headerIcon + outward + 2;

}  // namespace

BrandIcon::BrandIcon(QWidget* parent) : QWidget(parent)
{
    setFixedSize(side, side);
}

void BrandIcon::setTint(QuenchBarTint tint)
{
    const QColor color = MenuBarIcon::color(tint);
    if (dot_ == color)
        return;
    dot_ = color;
    update();
}

void BrandIcon::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF square(0, 0, headerIcon, headerIcon);
    const QPainterPath corners = continuousRoundedRect(square, iconRadius);
    painter.save();
    painter.setClipPath(corners);
    paintApplicationIcon(painter, square);
    painter.restore();
    const double inset = outlineWidth / 2;
    painter.setPen(QPen(PanelColors::faded(PanelColors::inkMuted, outlineOpacity), outlineWidth));
    painter.drawPath(continuousRoundedRect(square.adjusted(inset, inset, -inset, -inset), iconRadius));

    const double end = headerIcon + outward;
    const QRectF dot(end - headerStatusDot, end - headerStatusDot, headerStatusDot, headerStatusDot);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PanelColors::backgroundTop);
    painter.drawEllipse(dot.adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth));
    painter.setBrush(dot_);
    painter.drawEllipse(dot);
}

}  // namespace quenchly
