#include "invocation_log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "descriptor.h"

namespace quenchly::demo {

std::optional<std::string> recordInvocation(const std::vector<std::string>& arguments)
{
    const char* path = std::getenv("QUENCHLY_DEMO_LOG");
    if (path == nullptr || *path == '\0')
        return std::nullopt;
    const auto replace = nlohmann::json::error_handler_t::replace;
    const std::string line = nlohmann::json(arguments).dump(-1, ' ', false, replace) + "\n";
    const Descriptor log(::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    // One write to the file's end, so that the lines of tools running at once never mix.
    const bool written = log.number() >= 0 && ::write(log.number(), line.data(), line.size()) >= 0;
    return written ? std::nullopt : std::optional("cannot write " + std::string(path));
}

}  // namespace quenchly::demo
