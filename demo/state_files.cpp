#include "state_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "descriptor.h"

namespace quenchly::demo {

namespace {

constexpr std::size_t longestFile = 2U << 20U;  // bytes
constexpr int deepestNesting = 64;

/// What a regular file holds; empty when there is none or it is too long. A FIFO does not hold it up.
std::string contentOf(const std::filesystem::path& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::string content;
    std::array<char, 16384> buffer;
    while (content.size() <= longestFile) {
        const ::ssize_t count = ::read(file.number(), buffer.data(), buffer.size());
        if (count <= 0)
            return content;
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return {};
}

}  // namespace

std::optional<Json> readObject(const std::filesystem::path& path)
{
    // What is nested deeper than anything the checker writes would use up the stack when it is written again.
    const auto isShallow = [](int depth, Json::parse_event_t, Json&) { return depth <= deepestNesting; };
    Json value = Json::parse(contentOf(path), isShallow, false);
    if (!value.is_object())
        return std::nullopt;
    return value;
}

FileWrite storing(const Json& object, std::filesystem::path path)
{
    return {.path = std::move(path), .text = object.dump(2) + "\n"};
}

Json idleThrottle()
{
    return {{"level", 0}, {"dryRun", false}, {"targets", Json::array()}};
}

FolderLock::FolderLock(const std::filesystem::path& folder)
    : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor_.number() >= 0)
        ::flock(descriptor_.number(), LOCK_EX);
}

}  // namespace quenchly::demo
