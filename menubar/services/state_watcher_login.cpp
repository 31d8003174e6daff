#include <utility>

#include "login_at_launch.h"
#include "state_watcher.h"

namespace quenchly {

void StateWatcher::setOpenAtLogin(bool enabled)
{
    // Registering again does not help an item that the user has switched off in the system's settings.
    if (enabled && system_.loginItem->status() == LoginItem::Status::requiresApproval)
        system_.loginItem->requestApproval();
    LoginAtLaunch::setEnabled(system_, enabled);
    openAtLogin_ = LoginAtLaunch::isEnabled(system_);
    Q_EMIT published();
}

void StateWatcher::refreshOpenAtLogin()
{
    const bool enabled = LoginAtLaunch::isEnabled(system_);
    if (std::exchange(openAtLogin_, enabled) != enabled)
        Q_EMIT published();
}

}  // namespace quenchly
