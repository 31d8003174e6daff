#include "pill_button.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "device_pixels.h"
#include "panel_colors.h"
#include "panel_metrics.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr int paddingH = 10;
constexpr int paddingV = 3;
constexpr double cornerRadius = 6;
constexpr double hoverOpacity = 0.1;
constexpr double pressedOpacity = 0.2;

}  // namespace

PillButton::PillButton(QWidget* parent) : PanelButton(parent)
{
    setFont(panelFont(PanelMetrics::sectionSize));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PillButton::sizeHint() const
{
    line_.set(this->text(), font());
    const QSizeF text(line_.width(), QFontMetricsF(font()).height());
    return {static_cast<int>(std::ceil(text.width())) + 2 * paddingH,
            static_cast<int>(std::ceil(text.height())) + 2 * paddingV};
}

void PillButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    if (!isEnabled())
        painter.setOpacity(PanelColors::disabledOpacity);
    const double inside = isDown() ? pressedOpacity : isEnabled() && underMouse() ? hoverOpacity : 0;
    painter.setBrush(PanelColors::faded(PanelColors::gold, inside));
    DevicePixels::drawOutline(painter, rect(), PanelColors::outline, cornerRadius);
    painter.setPen(PanelColors::gold);
    line_.set(text(), font());
    line_.paint(painter, {paddingH, topInMiddle(height(), font())});
    painter.restore();
    paintFocus(painter, rect(), cornerRadius);
}

}  // namespace quenchly
