#include "status_window.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "l10n.h"
#include "menu_bar_icon.h"
#include "metrics_line.h"
#include "panel_colors.h"
#include "protect_lockup.h"
#include "recency_copy.h"
#include "state_watcher.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr int windowWidth = 380;
constexpr int margin = 16;
constexpr int columnGap = 12;
constexpr int glyphSize = 22;
constexpr int headlineSize = 18;
constexpr int lockupSize = 16;
constexpr int secondarySize = 14;
constexpr int figureSize = 13;

QString plainLine(const Text& text)
{
    return QString::fromStdString(displayLine(text.utf8()));
}

void setInk(QLabel& label, const QColor& color)
{
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, color);
    label.setPalette(palette);
}

struct LabelStyle {
    int pixelSize;
    QFont::Weight weight;
    QColor ink;
};

QLabel* makeLabel(const LabelStyle& style)
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPixelSize(style.pixelSize);
    font.setWeight(style.weight);
    label->setFont(font);
    setInk(*label, style.ink);
    return label;
}

/// An absent text takes no room.
void setText(QLabel& label, const QString& text)
{
    if (label.text() != text)
        label.setText(text);
    label.setVisible(!text.isEmpty());
}

QRect workAreaAround(QPoint position)
{
    const QScreen* screen = QGuiApplication::screenAt(position);  // null between screens
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    return screen->availableGeometry();
}

QString loadFigure(const LastMetrics& metrics)
{
    return QString::number(metrics.cpuLoadPct) + u'%';
}

QString swapFigure(const LastMetrics& metrics)
{
    return QString::fromStdString(swapFigures({.swapPct = metrics.swapPct, .swapUsedMB = metrics.swapUsedMB}));
}

}  // namespace

StatusWindow::StatusWindow(const StateWatcher& watcher, Role role) : watcher_(watcher), role_(role)
{
    if (role == Role::popup)
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowTitle(QStringLiteral("Quenchly"));

    setFixedWidth(windowWidth);

    glyph_ = new QLabel;
    glyph_->setFixedSize(glyphSize, glyphSize);
    headline_ = makeLabel({headlineSize, QFont::DemiBold, PanelColors::inkText});
    lockup_ = makeLabel({lockupSize, QFont::DemiBold, PanelColors::gold});
    lastCheck_ = makeLabel({secondarySize, QFont::Normal, PanelColors::inkMuted});
    detail_ = makeLabel({secondarySize, QFont::Normal, PanelColors::inkMuted});

    auto* lines = new QVBoxLayout;
    lines->setSpacing(4);
    lines->addWidget(headline_);
    lines->addWidget(lockup_);
    lines->addWidget(lastCheck_);
    load_ = addFigure(*lines);
    swap_ = addFigure(*lines);
    lines->addWidget(detail_);

    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(columnGap);
    columns->addWidget(glyph_, 0, Qt::AlignTop);
    columns->addLayout(lines, 1);

    connect(&watcher, &StateWatcher::published, this, [this] {
        if (isVisible())
            refresh();
    });
}

StatusWindow::Figure StatusWindow::addFigure(QVBoxLayout& lines)
{
    // A widget of its own: a layout whose widgets are all hidden would narrow the column around it.
    const Figure figure{new QWidget, makeLabel({figureSize, QFont::DemiBold, PanelColors::inkMuted}),
                        makeLabel({figureSize, QFont::Bold, PanelColors::inkText})};
    figure.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* line = new QHBoxLayout(figure.row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(figure.name);
    line->addWidget(figure.value, 1);
    lines.addWidget(figure.row);
    return figure;
}

void StatusWindow::show(Figure& figure, const QString& name, const QString& value)
{
    setText(*figure.name, name);
    setText(*figure.value, value);
    figure.row->setVisible(!value.isEmpty());
}

void StatusWindow::refresh()
{
    const QuenchStatus& status = watcher_.status();
    const bool protectOn = !status.managementDisabled;
    const auto age = RecencyCopy::ageSeconds(status.lastCheckISO, watcher_.system().now());
    const auto recency = RecencyCopy::extraLine(
        {.ageSeconds = age, .iconStale = status.icon == QuenchIcon::stale, .inFlight = watcher_.checkInFlight()});

    QPixmap glyph = QPixmap::fromImage(MenuBarIcon::image(status.barTint, devicePixelRatioF()));
    glyph_->setPixmap(glyph);
    setText(*headline_, plainLine(status.headline));
    setInk(*lockup_, protectOn && status.agentInstalled ? PanelColors::gold : PanelColors::clay);
    setText(*lockup_, QString::fromStdString(
                          ProtectLockup::panel({.protectOn = protectOn, .agentInstalled = status.agentInstalled})));
    setText(*lastCheck_, QString::fromStdString(recency.value_or("")));
    const auto& metrics = status.lastMetrics;
    show(load_, QString::fromStdString(L10n::t("load")), metrics ? loadFigure(*metrics) : QString());
    show(swap_, QString::fromStdString(L10n::t("swap")), metrics ? swapFigure(*metrics) : QString());
    setText(*detail_, plainLine(status.detail));
    layout()->activate();  // what the lines need is remembered until then
    setFixedHeight(layout()->heightForWidth(windowWidth));
}

void StatusWindow::openAt(QPoint position)
{
    refresh();
    if (!position.isNull()) {
        const QRect area = workAreaAround(position);
        const int left =
            std::clamp(position.x() - width() / 2, area.left(), std::max(area.left(), area.right() - width()));
        const int top = std::clamp(position.y(), area.top(), std::max(area.top(), area.bottom() - height()));
        move(left, top);
    }
    QWidget::show();
    raise();
    activateWindow();
}

void StatusWindow::showEvent(QShowEvent* event)
{
    refresh();
    QFrame::showEvent(event);
}

void StatusWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

void StatusWindow::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && role_ == Role::popup && !isActiveWindow())
        close();
}

void StatusWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient background(0, 0, 0, height());
    background.setColorAt(0, PanelColors::backgroundTop);
    background.setColorAt(1, PanelColors::backgroundBottom);
    painter.fillRect(rect(), background);
}

}  // namespace quenchly
