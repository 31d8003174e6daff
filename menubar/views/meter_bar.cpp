#include "meter_bar.h"

#include <QLinearGradient>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

#include "device_pixels.h"
#include "panel_colors.h"

namespace quenchly {
namespace {

constexpr int frameInterval = 16;  // milliseconds
constexpr double pixelSteps = 4;   // a change of less than a quarter of a pixel cannot be seen
constexpr double leadingOpacity = 0.85;

QLinearGradient accentGradient(const QRectF& fill, const QColor& accent)
{
    QLinearGradient gradient(fill.topLeft(), fill.topRight());
    gradient.setColorAt(0, PanelColors::faded(accent, leadingOpacity));
    gradient.setColorAt(1, accent);
    return gradient;
}

}  // namespace

MeterBar::MeterBar(QWidget* parent) : QProgressBar(parent)
{
    setFixedHeight(barHeight);
    setTextVisible(false);
    setRange(0, 100);
    setValue(0);
}

void MeterBar::setFill(double percent)
{
    if (percent == spring_.to)
        return;
    const double velocity = isMoving() ? spring_.velocity(static_cast<double>(sinceLetGo_.elapsed()) / 1000) : 0;
    spring_ = {.from = shownFill_, .to = percent, .initialVelocity = velocity};
    setUpdatesEnabled(false);  // or else it would be painted and sent to the screen at once, apart from the figure
    setValue(static_cast<int>(std::lround(percent)));
    setUpdatesEnabled(true);
    if (!isVisible()) {
        settle();
        return;
    }
    sinceLetGo_.start();
    frames_.start(frameInterval, Qt::PreciseTimer, this);
}

void MeterBar::setAccent(const QColor& accent)
{
    if (accent_ == accent)
        return;
    accent_ = accent;
    update();
}

void MeterBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != frames_.timerId()) {
        QProgressBar::timerEvent(event);
        return;
    }
    const double seconds = static_cast<double>(sinceLetGo_.elapsed()) / 1000;
    const double onePixel = 100 / (width() * devicePixelRatioF());
    if (seconds >= spring_.settledAfter(onePixel / pixelSteps))
        settle();
    else
        showFill(spring_.position(seconds));
}

void MeterBar::hideEvent(QHideEvent* event)
{
    settle();
    QProgressBar::hideEvent(event);
}

void MeterBar::settle()
{
    frames_.stop();
    showFill(spring_.to);
}

void MeterBar::showFill(double percent)
{
    const double steps = devicePixelRatioF() * pixelSteps;
    const bool looksTheSame = std::lround(filledWidth(percent) * steps) == std::lround(filledWidth(shownFill_) * steps);
    shownFill_ = percent;
    if (!looksTheSame)
        update();
}

double MeterBar::filledWidth(double percent) const
{
    return std::clamp(percent * width() / 100, 0.0, static_cast<double>(width()));
}

void MeterBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track = DevicePixels::snapped(painter, rect());
    const double line = DevicePixels::side(painter);
    painter.setPen(QPen(PanelColors::line, line));
    painter.setBrush(PanelColors::track);
    painter.drawRoundedRect(track.adjusted(line / 2, line / 2, -line / 2, -line / 2), track.height() / 2,
                            track.height() / 2);

    painter.setPen(Qt::NoPen);
    const QRectF fill(track.topLeft(), QSizeF(filledWidth(shownFill_), track.height()));
    const double radius = std::min(fill.width(), fill.height()) / 2;
    painter.setBrush(accentGradient(fill, accent_));
    painter.drawRoundedRect(fill, radius, radius);
}

}  // namespace quenchly
