#pragma once

#include <cstdint>

namespace quenchly {

/// Who listens on a port of this machine.
enum class PortOwner {
    nobody,
    thisUser,
    anotherUser,  ///< one of them is another's; that is root too, unless this process is root's
    unknown,      ///< on systems that do not tell
};

/// Those count whom a connection to this machine's own addresses may reach: listeners on the loopback and on all
/// addresses. Any thread.
PortOwner portOwner(std::uint16_t port);

}  // namespace quenchly
