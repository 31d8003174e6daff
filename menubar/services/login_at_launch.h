#pragma once

#include "system.h"

/// Open at Login, over the application's login item.
namespace quenchly::LoginAtLaunch {

/// Its mere presence means that the default was applied once; the user's later choice stands.
inline constexpr const char* didApplyDefaultKey = "quenchly.openAtLogin.didApplyDefault";

bool isEnabled(const System& system);

/// Registers or unregisters the login item; a failure is logged. True when it ends as asked.
bool setEnabled(const System& system, bool enabled);

/// Turns the login item on, once per user.
void applyDefaultIfNeeded(const System& system);

}  // namespace quenchly::LoginAtLaunch
