#pragma once

#include "menu_bar_extra.h"
#include "menu_bar_label.h"
#include "state_watcher.h"

namespace quenchly {

/// The words beside the glyph, from the watcher's state of now.
MenuBarLabel menuBarLabel(const StateWatcher& watcher);

/// What the menu bar item shows, from the watcher's state of now.
MenuBarExtraContent menuBarContent(const StateWatcher& watcher);

}  // namespace quenchly
