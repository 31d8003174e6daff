#include "login_at_launch.h"

namespace quenchly::LoginAtLaunch {

using Status = LoginItem::Status;

bool isEnabled(const System& system)
{
    return system.loginItem->status() == Status::enabled;
}

bool setEnabled(const System& system, bool enabled)
{
    // Turning off also removes an item that waits for approval or was not found.
    const Status alreadyThere = enabled ? Status::enabled : Status::notRegistered;
    if (system.loginItem->status() == alreadyThere)
        return true;
    const std::string error = enabled ? system.loginItem->registerItem() : system.loginItem->unregisterItem();
    if (error.empty())
        return true;
    system.log("Quenchly Open at Login failed: " + error);
    return false;
}

void applyDefaultIfNeeded(const System& system)
{
    if (system.userDefaults->contains(didApplyDefaultKey))
        return;
    system.userDefaults->setBool(didApplyDefaultKey, true);  // before trying, so that it happens at most once
    if (!isEnabled(system))
        setEnabled(system, true);
}

}  // namespace quenchly::LoginAtLaunch
