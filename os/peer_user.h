#pragma once

#include <sys/types.h>

#include <optional>

namespace quenchly {

/// The user of the process at the other end of a connected local socket, as it was when that connected or began to
/// listen. Nothing for any other descriptor.
std::optional<uid_t> peerUser(int socket);

}  // namespace quenchly
