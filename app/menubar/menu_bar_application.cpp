#include "menu_bar_application.h"

#include <QApplication>
#include <QEvent>
#include <utility>

#include "menu_bar_content.h"

namespace quenchly {
namespace {

/// A press on the item first takes the focus from the open panel, which closes; the press itself arrives just after
/// and must not open it again. In milliseconds.
constexpr qint64 samePressInterval = 250;

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
    : watcher_(watcher), updater_(updater), extra_(std::move(extra))
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
    if (panel().isVisible())
        panel().close();
    else if (!sinceHidden_.isValid() || sinceHidden_.elapsed() > samePressInterval)
        open(position, activationToken);
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
        panel_ = std::make_unique<MenuPanel>(watcher_, updater_, role);
        panel_->installEventFilter(this);
    }
    return *panel_;
}

bool MenuBarApplication::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Hide)
        sinceHidden_.start();
    return QObject::eventFilter(object, event);
}

}  // namespace quenchly
