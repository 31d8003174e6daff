#include "menu_panel.h"

#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <utility>

#include "compositing.h"
#include "device_pixels.h"
#include "l10n.h"
#include "menu_content_view.h"
#include "panel_colors.h"
#include "panel_controller.h"
#include "panel_metrics.h"
#include "panel_window.h"
#include "wind_palette.h"

namespace quenchly {
namespace {

using PanelMetrics::panelWidth;
using PanelMetrics::stripeHeight;

using namespace std::chrono_literals;

/// A window manager that is still busy with the windows before gives the focus elsewhere and back.
constexpr std::chrono::milliseconds longestDetourOfFocus = 100ms;
constexpr int gapAroundPanel = 4;  // to the edges of the work area
constexpr int scrollBarWidth = 8;
constexpr double outlineOpacity = 0.14;

/// What the outline, the rounded corners and the stripe take.
constexpr int edgeWidth = static_cast<int>(PanelMetrics::cornerRadius);

void paintWindStripe(QPainter& painter, int width)
{
    const auto color = [](std::uint32_t rgb, double opacity) {
        return PanelColors::faded(PanelColors::opaque(rgb), opacity);
    };
    QLinearGradient wind(0, 0, width, 0);
    wind.setColorAt(0, color(WindPalette::blue, 0.55));
    wind.setColorAt(1 / 3.0, color(WindPalette::teal, 0.45));
    wind.setColorAt(2 / 3.0, color(WindPalette::amber, 0.50));
    wind.setColorAt(1, color(WindPalette::red, 0.45));
    painter.fillRect(QRectF(0, 0, width, stripeHeight), wind);
}

/// Without a theme Qt shows them bright yellow.
void colorToolTipsLikeThePanel()
{
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::ToolTipBase, PanelColors::parchment);
    palette.setColor(QPalette::Window, PanelColors::parchment);  // what some styles take instead
    palette.setColor(QPalette::ToolTipText, PanelColors::inkText);
    palette.setColor(QPalette::WindowText, PanelColors::inkText);
    QToolTip::setPalette(palette);
}

}  // namespace

MenuPanel::MenuPanel(PanelController& controller, Role role)
    : controller_(controller),
      role_(role),
      view_(new MenuContentView),
      scrollArea_(new QScrollArea(this)),
      focusLoss_(new QTimer(this))
{
    setWindowTitle(QStringLiteral("Quenchly"));
    setFixedWidth(panelWidth);
    colorToolTipsLikeThePanel();
    setFocusPolicy(Qt::ClickFocus);
    if (role == Role::popup) {
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setAttribute(Qt::WA_TranslucentBackground, windowsMayBeTranslucent());
    }
    scrollArea_->setFrameShape(QFrame::NoFrame);
    scrollArea_->setFocusPolicy(Qt::NoFocus);
    scrollArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea_->setWidget(view_);
    scrollArea_->viewport()->setAutoFillBackground(false);
    view_->setAutoFillBackground(false);
    makeScrollBar();

    focusLoss_->setSingleShot(true);
    focusLoss_->setInterval(longestDetourOfFocus);
    connect(focusLoss_, &QTimer::timeout, this, &MenuPanel::leave);
    connect(&controller, &PanelController::changed, this, &MenuPanel::refresh);
    connect(&controller, &PanelController::leaving, this, &MenuPanel::leave);
    connect(view_, &MenuContentView::triggered, &controller, &PanelController::perform);
    connect(view_, &MenuContentView::acknowledged, &controller, &PanelController::acknowledge);
    connect(view_, &MenuContentView::allAcknowledged, &controller, &PanelController::acknowledgeAll);
    // Only when the pointer is where it goes: it may have left one row for another.
    connect(view_, &MenuContentView::released, this, &MenuPanel::refresh, Qt::QueuedConnection);
    connect(view_, &MenuContentView::focusMoved, this,
            [this](QWidget* focus) { scrollArea_->ensureWidgetVisible(focus); });
}

MenuPanel::~MenuPanel()
{
    controller_.setShown(false);
}

/// Over the content and not beside it, so that the texts break alike with and without it.
void MenuPanel::makeScrollBar()
{
    scrollBar_ = new QScrollBar(Qt::Vertical, this);
    scrollBar_->setAccessibleName(QString::fromStdString(L10n::t("scroll")));
    scrollBar_->setAccessibleDescription(QString::fromStdString(L10n::t("scroll_description")));
    scrollBar_->setStyleSheet(
        QStringLiteral("QScrollBar { background: transparent; border: none; margin: 0; }"
                       "QScrollBar::handle { background: %1; border-radius: 3px; margin: 1px; min-height: 24px; }"
                       "QScrollBar::add-line, QScrollBar::sub-line, QScrollBar::add-page, QScrollBar::sub-page"
                       "{ background: none; border: none; height: 0; }")
            .arg(PanelColors::line.name()));
    QScrollBar* hidden = scrollArea_->verticalScrollBar();
    connect(hidden, &QScrollBar::rangeChanged, this, [this](int minimum, int maximum) {
        scrollBar_->setRange(minimum, maximum);
        scrollBar_->setPageStep(scrollArea_->viewport()->height());
        scrollBar_->setVisible(maximum > minimum);
    });
    connect(hidden, &QScrollBar::valueChanged, scrollBar_, &QScrollBar::setValue);
    connect(scrollBar_, &QScrollBar::valueChanged, hidden, &QScrollBar::setValue);
    scrollBar_->hide();
}

void MenuPanel::refresh()
{
    view_->setContent(controller_.content());
    fit();
}

void MenuPanel::tellWhetherShown()
{
    controller_.setShown(isVisible() && !isMinimized());
}

void MenuPanel::leave()
{
    if (role_ == Role::popup)
        close();
}

void MenuPanel::showWhole()
{
    anchor_ = {};
    refresh();
    setFixedHeight(stripeHeight + view_->height());
}

void MenuPanel::fit()
{
    const int contentHeight = view_->contentHeight();
    view_->setFixedSize(panelWidth, contentHeight);
    // A popup has no frame, and on X11 one is made up for a window whose size the window manager has yet to follow.
    const int frameHeight = role_ == Role::popup ? 0 : frameGeometry().height() - this->height();
    const int height = std::min(stripeHeight + contentHeight, workArea().height() - frameHeight);
    if (height != this->height())
        setFixedHeight(height);
    place();
}

QRect MenuPanel::workArea() const
{
    const QScreen* screen = anchor_.isNull() ? this->screen() : QGuiApplication::screenAt(anchor_);
    if (screen == nullptr)  // between screens
        screen = QGuiApplication::primaryScreen();
    return screen->availableGeometry().adjusted(gapAroundPanel, gapAroundPanel, -gapAroundPanel, -gapAroundPanel);
}

void MenuPanel::place()
{
    if (role_ != Role::popup || anchor_.isNull())
        return;
    const QRect area = workArea();
    const QPoint furthest = area.bottomRight() - QPoint(width(), height()) + QPoint(1, 1);
    const QPoint corner(std::clamp(anchor_.x() - width() / 2, area.left(), std::max(area.left(), furthest.x())),
                        std::clamp(anchor_.y(), area.top(), std::max(area.top(), furthest.y())));
    if (corner != pos())
        move(corner);
}

void MenuPanel::openAt(QPoint position)
{
    anchor_ = position;
    if (!isVisible())
        scrollBar_->setValue(0);
    controller_.prepareToOpen();
    refresh();
    setFocus(Qt::PopupFocusReason);
    if (role_ == Role::popup) {
        winId();  // makes the window
        becomePanelWindow(*windowHandle());
    }
    show();
    raise();
    activateWindow();
}

void MenuPanel::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    tellWhetherShown();
}

void MenuPanel::hideEvent(QHideEvent* event)
{
    QFrame::hideEvent(event);
    focusLoss_->stop();
    tellWhetherShown();
}

void MenuPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (!view_->moveFocus(*event) && !scroll(event->key()))
        QFrame::keyPressEvent(event);
}

bool MenuPanel::scroll(int key)
{
    switch (key) {
        case Qt::Key_PageUp:
            scrollBar_->triggerAction(QAbstractSlider::SliderPageStepSub);
            return true;
        case Qt::Key_PageDown:
            scrollBar_->triggerAction(QAbstractSlider::SliderPageStepAdd);
            return true;
        case Qt::Key_Home:
            scrollBar_->triggerAction(QAbstractSlider::SliderToMinimum);
            return true;
        case Qt::Key_End:
            scrollBar_->triggerAction(QAbstractSlider::SliderToMaximum);
            return true;
        default:
            return false;
    }
}

bool MenuPanel::focusNextPrevChild(bool next)
{
    // The scroll area follows only the focus that was inside it before.
    const bool moved = QFrame::focusNextPrevChild(next);
    if (moved && view_->isAncestorOf(focusWidget()))
        scrollArea_->ensureWidgetVisible(focusWidget());
    return moved;
}

void MenuPanel::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        tellWhetherShown();
    if (event->type() != QEvent::ActivationChange)
        return;
    // A help popover belongs to the panel, whatever the system makes of its focus.
    if (isActiveWindow() || QApplication::activePopupWidget() != nullptr)
        focusLoss_->stop();
    else if (isVisible())
        focusLoss_->start();
}

void MenuPanel::resizeEvent(QResizeEvent*)
{
    const QRect belowStripe = rect().adjusted(0, stripeHeight, 0, 0);
    scrollArea_->setGeometry(belowStripe);
    scrollBar_->setGeometry(belowStripe.adjusted(width() - scrollBarWidth, 0, 0, 0));
}

void MenuPanel::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    QLinearGradient background(0, 0, 0, height());
    background.setColorAt(0, PanelColors::backgroundTop);
    background.setColorAt(1, PanelColors::backgroundBottom);
    // A bar that moves shows this many times a second, and nothing of the edge.
    if (rect().adjusted(edgeWidth, edgeWidth, -edgeWidth, -edgeWidth).contains(event->rect())) {
        painter.fillRect(event->rect(), background);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = testAttribute(Qt::WA_TranslucentBackground) ? PanelMetrics::cornerRadius : 0;
    QPainterPath shape;
    shape.addRoundedRect(rect(), radius, radius);
    painter.fillPath(shape, background);
    painter.save();
    painter.setClipPath(shape);
    paintWindStripe(painter, width());
    painter.restore();
    if (role_ != Role::popup)
        return;
    painter.setBrush(Qt::NoBrush);
    DevicePixels::drawOutline(painter, rect(), PanelColors::faded(Qt::white, outlineOpacity), radius);
}

}  // namespace quenchly
