#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTimer>
#include <chrono>
#include <optional>

#include "menu_bar_extra.h"
#include "session_bus.h"
#include "status_notifier_item.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

/// A panel that restarts is back within this time; the item does not move to another tray meanwhile.
constexpr auto restartGrace = 3s;

/// At login the tray may start after this program.
constexpr auto startGrace = 2s;

/// Nothing tells that the X11 tray came or went.
constexpr auto x11TrayCheckInterval = 5s;

QIcon iconOf(const std::vector<QImage>& images)
{
    QIcon icon;
    for (const QImage& image : images)
        icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

// QSystemTrayIcon's tooltip guesses whether a text is HTML; this one always is.
QString trayToolTip(const QString& text)
{
    return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

/// A tray on X11 tells positions in pixels. Qt keeps the corner of a screen where it is and scales what is inside.
QPoint inPoints(QPoint position)
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return position;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        const QRect pixels(area.topLeft(), area.size() * screen->devicePixelRatio());
        if (pixels.contains(position))
            return area.topLeft() + (position - area.topLeft()) / screen->devicePixelRatio();
    }
    return position;
}

class LinuxMenuBarExtra : public MenuBarExtra {
public:
    LinuxMenuBarExtra();

    void setContent(const MenuBarExtraContent& content) override;
    bool isAvailable() const override { return available_.value_or(false); }

private:
    void joinBus();
    void leaveBus();
    void hostChanged(bool hasHost);
    void showOnX11Tray();
    void updateX11Tray();
    void activatedOnX11Tray(QSystemTrayIcon::ActivationReason reason);
    void setAvailable(bool available);

    MenuBarExtraContent content_;
    SessionBus bus_;
    std::unique_ptr<StatusNotifierItem> item_;
    std::unique_ptr<QSystemTrayIcon> x11Icon_;
    QTimer restartGrace_;
    QTimer x11TrayCheck_;
    std::optional<bool> available_;
};

LinuxMenuBarExtra::LinuxMenuBarExtra()
{
    restartGrace_.setSingleShot(true);
    connect(&restartGrace_, &QTimer::timeout, this, &LinuxMenuBarExtra::showOnX11Tray);
    x11TrayCheck_.setTimerType(Qt::VeryCoarseTimer);
    connect(&x11TrayCheck_, &QTimer::timeout, this, [this] { setAvailable(QSystemTrayIcon::isSystemTrayAvailable()); });

    if (!bus_.connection().isConnected()) {
        restartGrace_.start(0s);
        return;
    }
    connect(&bus_, &SessionBus::lost, this, &LinuxMenuBarExtra::leaveBus);
    connect(&bus_, &SessionBus::found, this, &LinuxMenuBarExtra::joinBus);
    joinBus();
}

void LinuxMenuBarExtra::joinBus()
{
    item_ = std::make_unique<StatusNotifierItem>(bus_.connection());
    item_->setContent(content_);
    connect(item_.get(), &StatusNotifierItem::activated, this,
            [this](QPoint position, const QString& token) { Q_EMIT activated(inPoints(position), token); });
    connect(item_.get(), &StatusNotifierItem::hostChanged, this, &LinuxMenuBarExtra::hostChanged);
}

void LinuxMenuBarExtra::leaveBus()
{
    item_.reset();
    hostChanged(false);
}

void LinuxMenuBarExtra::setContent(const MenuBarExtraContent& content)
{
    if (content == content_)
        return;
    content_ = content;
    if (item_)
        item_->setContent(content);
    updateX11Tray();
}

void LinuxMenuBarExtra::hostChanged(bool hasHost)
{
    if (!hasHost) {
        restartGrace_.start(available_ ? restartGrace : startGrace);
        return;
    }
    restartGrace_.stop();
    x11TrayCheck_.stop();
    x11Icon_.reset();
    setAvailable(true);
}

// Asked for only while no watcher has a tray: Qt remembers its first finding for good, and would put its own item
// beside ours.
void LinuxMenuBarExtra::showOnX11Tray()
{
    if (QGuiApplication::platformName() == QStringLiteral("xcb")) {
        x11Icon_ = std::make_unique<QSystemTrayIcon>();
        connect(x11Icon_.get(), &QSystemTrayIcon::activated, this, &LinuxMenuBarExtra::activatedOnX11Tray);
        updateX11Tray();
        x11Icon_->show();
        x11TrayCheck_.start(x11TrayCheckInterval);
    }
    setAvailable(x11Icon_ && QSystemTrayIcon::isSystemTrayAvailable());
}

void LinuxMenuBarExtra::updateX11Tray()
{
    if (!x11Icon_)
        return;
    x11Icon_->setIcon(iconOf(content_.images));
    x11Icon_->setToolTip(trayToolTip(content_.label));
}

void LinuxMenuBarExtra::activatedOnX11Tray(QSystemTrayIcon::ActivationReason reason)
{
    // The first press of a double click has been a trigger already.
    if (reason != QSystemTrayIcon::DoubleClick)
        Q_EMIT activated(QCursor::pos(), {});
}

void LinuxMenuBarExtra::setAvailable(bool available)
{
    if (available_ == available)
        return;
    available_ = available;
    Q_EMIT availabilityChanged(available);
}

}  // namespace

std::unique_ptr<MenuBarExtra> makeMenuBarExtra()
{
    return std::make_unique<LinuxMenuBarExtra>();
}

}  // namespace quenchly
