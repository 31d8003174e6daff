#pragma once

#include <QString>

#include "state_watcher.h"

namespace quenchly {

/// The same system without a way to change anything on it: a rendering must not register the login item.
System withoutSideEffects(System system);

/// Writes menu-bar.png and panel.png (both at 2x) and status.json into a folder, which is made when it is missing.
/// Empty on success, else what went wrong in one line.
QString renderHeadless(StateWatcher& watcher, const QString& folder);

}  // namespace quenchly
