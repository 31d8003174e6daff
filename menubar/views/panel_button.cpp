#include "panel_button.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <utility>

#include "l10n.h"
#include "panel_colors.h"
#include "text_label.h"

namespace quenchly {
namespace {

constexpr double ringWidth = 1.5;

}  // namespace

PanelButton::PanelButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void PanelButton::setAvailable(bool available)
{
    if (available == isEnabled())
        return;
    if (!available && window()->focusWidget() == this) {
        // Qt would pass it on to the next widget, where it shows.
        window()->setFocus(Qt::OtherFocusReason);
        awaitsFocus_ = true;
    }
    setEnabled(available);
    if (available && std::exchange(awaitsFocus_, false) && window()->focusWidget() == window())
        setFocus(Qt::PopupFocusReason);
}

void PanelButton::describe(const std::string& description, const std::string& reason)
{
    const std::string text = reason.empty() ? description : L10n::tf("two_sentences", {reason, description});
    setAccessibleDescription(QString::fromStdString(text));
    setToolTip(plainToolTip(QString::fromStdString(reason)));
}

void PanelButton::inheritFocus(const PanelButton& from)
{
    const QWidget* focus = window()->focusWidget();
    if (focus != &from && !(from.awaitsFocus_ && focus == window()))
        return;
    focusShows_ = from.focusShows_;
    awaitsFocus_ = !isEnabled();
    setFocus(Qt::PopupFocusReason);
}

void PanelButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat())
                click();
            break;
        case Qt::Key_Space:
            QAbstractButton::keyPressEvent(event);
            break;
        default:
            event->ignore();
    }
}

void PanelButton::focusInEvent(QFocusEvent* event)
{
    // The return of a window or of a popup brings the focus back as it was.
    const bool comesBack = event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason;
    if (!comesBack)
        focusShows_ = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void PanelButton::hideEvent(QHideEvent* event)
{
    awaitsFocus_ = false;
    QAbstractButton::hideEvent(event);
}

void PanelButton::paintFocus(QPainter& painter, const QRectF& around, double radius) const
{
    if (!hasFocus() || !focusShows_)
        return;
    const double inset = ringWidth / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(PanelColors::gold, ringWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(around.adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace quenchly
