#pragma once

#include <QImage>

#include "menu_bar_extra.h"

namespace quenchly {

/// The item as it looks in a menu bar that shows text, for documentation and for machines without a display.
QImage menuBarPicture(const MenuBarExtraContent& content, double scale);

}  // namespace quenchly
