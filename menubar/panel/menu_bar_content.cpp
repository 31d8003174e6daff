#include "menu_bar_content.h"

#include "text.h"

namespace quenchly {

MenuBarLabel menuBarLabel(const StateWatcher& watcher)
{
    return menuBarLabel(watcher.status(), watcher.system().now(), watcher.checkInFlight());
}

MenuBarExtraContent menuBarContent(const StateWatcher& watcher)
{
    const MenuBarLabel label = menuBarLabel(watcher);
    return {.images = watcher.iconImage(),
            .label = QString::fromStdString(label.text()),
            .statusWord = QString::fromStdString(label.statusWord),
            .explanation = QString::fromStdString(displayLine(watcher.status().headline.utf8()))};
}

}  // namespace quenchly
