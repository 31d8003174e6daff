#include "reader_gone.h"

#include <poll.h>

#include <thread>

namespace quenchly {

bool readerIsGoneWithin(int descriptor, std::chrono::milliseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    // An end is told whatever is asked for, except by macOS, which looks only if something is.
    pollfd output{.fd = descriptor, .events = POLLHUP, .revents = 0};
    if (poll(&output, 1, static_cast<int>(time.count())) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0)
        return true;
    // Signals interrupt it, and some systems refuse to look at terminals.
    std::this_thread::sleep_until(end);
    return false;
}

}  // namespace quenchly
