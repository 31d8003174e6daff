#include "menu_bar_application.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <chrono>
#include <utility>

#include "menu_bar_content.h"

namespace quenchly {
namespace {

FocusTakingPress::Moment now()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return {.pointer = QCursor::pos(), .time = std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart)};
}

/// An alert takes all input until it is answered; a panel beside it would be dead.
bool showAlertThatIsUp()
{
    QWidget* alert = QApplication::activeModalWidget();
    if (alert == nullptr)
        return false;
    alert->raise();
    alert->activateWindow();
    return true;
}

}  // namespace

MenuBarApplication::MenuBarApplication(StateWatcher& watcher, Updater& updater, std::unique_ptr<MenuBarExtra> extra)
    : watcher_(watcher), controller_(watcher, updater), extra_(std::move(extra))
{
    const auto showContent = [this] { extra_->setContent(menuBarContent(watcher_)); };
    showContent();
    connect(&watcher_, &StateWatcher::published, this, showContent);
    connect(extra_.get(), &MenuBarExtra::activated, this, &MenuBarApplication::toggle);
    connect(extra_.get(), &MenuBarExtra::availabilityChanged, this, &MenuBarApplication::followAvailability);
}

MenuBarApplication::~MenuBarApplication() = default;

void MenuBarApplication::open(QPoint position, const QString& activationToken)
{
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());  // Qt's Wayland client passes it on and clears it
    if (!position.isNull())
        lastPosition_ = position;
    if (showAlertThatIsUp())
        return;
    panel().openAt(lastPosition_);
}

void MenuBarApplication::toggle(QPoint position, const QString& activationToken)
{
    if (showAlertThatIsUp())
        return;
    if (panel().isVisible()) {
        panel().close();
        focusTakingPress_.forget();
    } else if (!focusTakingPress_.isHeardAt(now())) {
        open(position, activationToken);
    }
}

void MenuBarApplication::followAvailability(bool available)
{
    // Later losses stay silent: a tray that goes away behind a lock screen must not leave a window behind it.
    const bool first = !std::exchange(availabilityKnown_, true);
    if (first && !available)
        open({}, {});
}

MenuPanel& MenuBarApplication::panel()
{
    const auto role = extra_->isAvailable() ? MenuPanel::Role::popup : MenuPanel::Role::ordinary;
    // A panel that somebody reads stays as it is, whatever becomes of the item.
    if (!panel_ || (panel_->role() != role && !panel_->isVisible())) {
        panel_ = std::make_unique<MenuPanel>(controller_, role);
        panel_->installEventFilter(this);
    }
    return *panel_;
}

bool MenuBarApplication::eventFilter(QObject* object, QEvent* event)
{
    // A panel that is being closed in another way has lost its focus too, but is hidden already.
    const auto& window = *static_cast<const QWidget*>(object);
    if (event->type() == QEvent::ActivationChange && !window.isHidden()) {
        if (window.isActiveWindow())
            focusTakingPress_.forget();
        else
            focusTakingPress_.panelLostFocus(now());
    }
    return QObject::eventFilter(object, event);
}

}  // namespace quenchly
