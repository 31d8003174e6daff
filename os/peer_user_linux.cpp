#include <sys/socket.h>

#include "peer_user.h"

namespace quenchly {

std::optional<uid_t> peerUser(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    // Sockets without a peer answer too, with an id that nobody has.
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 || peer.uid == static_cast<uid_t>(-1))
        return std::nullopt;
    return peer.uid;
}

}  // namespace quenchly
