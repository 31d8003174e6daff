#include "menu_bar_content.h"

#include "text.h"

namespace quenchly {

MenuBarLabel menuBarLabel(const StateWatcher& watcher)
{
    return menuBarLabel(
        {.status = watcher.status(), .checkInFlight = watcher.checkInFlight(), .now = watcher.system().now()});
}

MenuBarExtraContent menuBarContent(const StateWatcher& watcher)
{
    return {.images = watcher.iconImage(),
            .label = QString::fromStdString(menuBarLabel(watcher).text()),
            .explanation = QString::fromStdString(displayLine(watcher.status().headline.utf8()))};
}

}  // namespace quenchly
