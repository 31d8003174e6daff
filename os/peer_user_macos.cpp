#include <unistd.h>

#include "peer_user.h"

namespace quenchly {

// The system's way to ask a socket for LOCAL_PEERCRED.
std::optional<uid_t> peerUser(int socket)
{
    uid_t user = 0;
    gid_t group = 0;
    return getpeereid(socket, &user, &group) == 0 ? std::optional(user) : std::nullopt;
}

}  // namespace quenchly
