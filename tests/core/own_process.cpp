#include "own_process.h"

#include <sys/wait.h>

#include <cerrno>
#include <filesystem>
#include <iterator>

namespace quenchly::testing {

int openDescriptors()
{
    const std::filesystem::directory_iterator open("/dev/fd");
    return static_cast<int>(std::distance(begin(open), end(open)));
}

bool hasNoChild()
{
    siginfo_t ended{};
    return waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) < 0 && errno == ECHILD;
}

}  // namespace quenchly::testing
