#include "help_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "help_popover.h"
#include "l10n.h"
#include "panel_colors.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr double symbolDiameter = HelpIcon::side - 2 * HelpIcon::inset;
constexpr double strokeWidth = 1.1;
constexpr int titleSize = 13;

/// A circle with a question mark, in a square of one unit around the origin.
QPainterPath questionMark()
{
    QPainterPath mark;
    mark.moveTo(-0.14, -0.12);
    mark.cubicTo(-0.14, -0.32, 0.15, -0.32, 0.15, -0.12);
    mark.cubicTo(0.15, 0.01, 0.0, 0.02, 0.0, 0.13);
    return mark;
}

void paintSymbol(QPainter& painter, const QRectF& frame, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(frame.center());
    painter.scale(symbolDiameter, symbolDiameter);
    painter.setPen(QPen(color, strokeWidth / symbolDiameter, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double radius = 0.5 - strokeWidth / symbolDiameter / 2;
    painter.drawEllipse(QPointF(), radius, radius);
    painter.drawPath(questionMark());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(0, 0.24), 0.055, 0.055);
    painter.restore();
}

}  // namespace

HelpIcon::HelpIcon(QWidget* parent) : PanelButton(parent)
{
    setFont(panelFont(titleSize));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QString::fromStdString(L10n::t("help")));
    connect(this, &HelpIcon::clicked, this, &HelpIcon::togglePopover);
}

void HelpIcon::setHelp(const std::string& utf8)
{
    const QString help = QString::fromStdString(utf8);
    if (help_ != help) {
        help_ = help;
        setToolTip(plainToolTip(help));
        setAccessibleDescription(help);
        if (popover_)
            popover_->setHelp(help);
    }
    setVisible(!help.isEmpty());
}

void HelpIcon::setTitle(const std::string& utf8)
{
    const QString title = QString::fromStdString(utf8);
    if (text() == title)
        return;
    setText(title);
    setAccessibleName(QString::fromStdString(L10n::tf("titled_help", {utf8})));
    updateGeometry();
}

bool HelpIcon::isPopoverOpen() const
{
    return popover_ && popover_->isVisible();
}

QSize HelpIcon::sizeHint() const
{
    title_.set(text(), font());
    const int titleWidth = static_cast<int>(std::ceil(title_.width()));
    return {titleWidth + side, side};
}

void HelpIcon::togglePopover()
{
    if (isPopoverOpen()) {
        popover_->close();
        return;
    }
    popover_ = new HelpPopover(help_, this);
    popover_->setAttribute(Qt::WA_DeleteOnClose);
    popover_->open();
}

void HelpIcon::hideEvent(QHideEvent* event)
{
    if (popover_)
        popover_->close();
    PanelButton::hideEvent(event);
}

void HelpIcon::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool stressed = underMouse() || isDown() || isPopoverOpen();
    painter.setPen(PanelColors::inkMuted);
    title_.set(text(), font());
    title_.paint(painter, {0, topInMiddle(height(), font())});
    const QRectF frame(width() - side, 0, side, height());
    paintSymbol(painter, frame, stressed ? PanelColors::inkMuted : PanelColors::helpSymbol);
    paintFocus(painter, rect(), side / 2.0);
}

}  // namespace quenchly
