#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string>

#include "compositing.h"

namespace quenchly {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// A compositing manager owns this selection of the screen that it serves.
bool hasCompositingManager(xcb_connection_t* connection)
{
    const std::string name = "_NET_WM_CM_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, false, static_cast<uint16_t>(name.size()), name.c_str()), nullptr));
    if (!atom)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

}  // namespace

bool windowsMayBeTranslucent()
{
    // The offscreen platform has this interface too, but no connection behind it.
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return true;
    return hasCompositingManager(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
}

}  // namespace quenchly
