#include "own_facts.h"

#include <malloc.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>

#include "descriptor.h"
#include "file_reading.h"
#include "process_facts.h"

namespace quenchly::soak {
namespace {

namespace fs = std::filesystem;

/// Empty when the process or thread has just ended.
std::string contentOf(const fs::path& file)
{
    return readFile(file).bytes;
}

std::vector<std::string> descriptors()
{
    std::vector<std::string> found;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd", ignored)) {
        std::string target = fs::read_symlink(entry.path(), ignored).string();
        std::erase_if(target, [](unsigned char c) { return std::isdigit(c) != 0; });
        if (target != "/proc//fd")  // the listing itself
            found.push_back(target);
    }
    std::ranges::sort(found);
    return found;
}

struct Stat {
    char state = '?';
    pid_t parent = 0;
};

std::optional<Stat> statOf(pid_t process)
{
    const std::string text = contentOf("/proc/" + std::to_string(process) + "/stat");
    std::istringstream fields(text.substr(std::min(text.rfind(')'), text.size() - 1) + 1));
    Stat stat;
    return fields >> stat.state >> stat.parent ? std::optional(stat) : std::nullopt;
}

}  // namespace

OwnFacts ownFacts()
{
    return {.descriptors = descriptors(),
            .threads = bench::factsOf(::getpid()).threads,
            .liveBytes = static_cast<std::int64_t>(::mallinfo2().uordblks),
            .privateBytes = bench::memoryOf(::getpid()).privateKiB * 1024};
}

std::vector<OwnChild> ownChildren()
{
    std::vector<OwnChild> children;
    std::error_code ignored;
    for (const auto& thread : fs::directory_iterator("/proc/self/task", ignored)) {
        std::istringstream words(contentOf(thread.path() / "children"));
        for (pid_t process = 0; words >> process;)
            if (const auto stat = statOf(process))
                children.push_back({process, stat->state == 'Z'});
    }
    return children;
}

void killOwnChild(pid_t process)
{
    const Descriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    const auto stat = statOf(process);  // by now the handle keeps to whoever this is
    if (handle.number() >= 0 && stat && stat->parent == ::getpid())
        ::syscall(SYS_pidfd_send_signal, handle.number(), SIGKILL, nullptr, 0);
}

}  // namespace quenchly::soak
