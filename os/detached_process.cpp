#include "detached_process.h"

#include <future>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace quenchly {

bool startDetached(const ChildProcess& child)
{
    std::promise<bool> launched;
    std::future<bool> result = launched.get_future();
    try {
        std::thread([child, launched = std::move(launched)]() mutable {
            const std::optional<pid_t> process = start(child);
            launched.set_value(process.has_value());
            if (process)
                exitStatusOf(*process);
        }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return result.get();
}

}  // namespace quenchly
