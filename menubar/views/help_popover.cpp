#include "help_popover.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "compositing.h"
#include "device_pixels.h"
#include "l10n.h"
#include "panel_colors.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr int padding = 12;
constexpr int gap = 4;
constexpr double cornerRadius = 10;

}  // namespace

HelpPopover::HelpPopover(const QString& help, QWidget* anchor)
    : QFrame(anchor, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint), anchor_(anchor)
{
    setAttribute(Qt::WA_TranslucentBackground, windowsMayBeTranslucent());
    setWindowTitle(QString::fromStdString(L10n::t("help")));
    text_ = new TextLabel(
        {.pixelSize = 13, .ink = PanelColors::inkText, .mostLines = std::numeric_limits<int>::max(), .lineHeight = 1.4},
        this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->addWidget(text_);
    setHelp(help);
}

void HelpPopover::setHelp(const QString& help)
{
    text_->showText(help.toStdString());
    setAccessibleName(help);
    fit();
}

void HelpPopover::fit()
{
    const int width = std::min(text_->sizeHint().width() + 2 * padding, widest);
    setFixedSize(width, text_->heightForWidth(width - 2 * padding) + 2 * padding);
}

QRect HelpPopover::anchorOnScreen() const
{
    return {anchor_->mapToGlobal(QPoint(0, 0)), anchor_->size()};
}

QRect HelpPopover::subjectOnScreen() const
{
    const QWidget* subject = anchor_->parentWidget();
    return {subject->mapToGlobal(QPoint(0, 0)), subject->size()};
}

void HelpPopover::open()
{
    const QRect subject = subjectOnScreen();
    const QRect area = anchor_->screen()->availableGeometry();
    const int furthestLeft = std::max(area.left(), area.right() + 1 - width());
    const int left = std::clamp(anchorOnScreen().center().x() - width() / 2, area.left(), furthestLeft);
    const bool fitsBelow = subject.bottom() + gap + height() <= area.bottom();
    const int top = fitsBelow ? subject.bottom() + 1 + gap : subject.top() - gap - height();
    move(left, std::max(top, area.top()));
    show();
}

void HelpPopover::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Escape:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            close();
            break;
        default:
            QFrame::keyPressEvent(event);
    }
}

void HelpPopover::mousePressEvent(QMouseEvent* event)
{
    // The press is delivered again to what lies under it; on the icon itself it would open the popover anew.
    setAttribute(Qt::WA_NoMouseReplay, anchorOnScreen().contains(event->globalPosition().toPoint()));
    if (rect().contains(event->position().toPoint()))
        event->accept();
    else
        close();
}

void HelpPopover::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = testAttribute(Qt::WA_TranslucentBackground) ? cornerRadius : 0;
    painter.setBrush(PanelColors::parchment);
    DevicePixels::drawOutline(painter, rect(), PanelColors::outline, radius);
}

}  // namespace quenchly
