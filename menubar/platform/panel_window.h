#pragma once

#include <QWindow>

namespace quenchly {

/// Makes a window the panel of a menu bar item, where the system knows such windows: it takes keys without making its
/// program the active one, and opens on the space that is shown. Creates the native window if there is none.
void becomePanelWindow(QWindow& window);

}  // namespace quenchly
