#include "state_files.h"

#include <fcntl.h>
#include <sys/file.h>

#include <nlohmann/json.hpp>
#include <utility>

#include "file_reading.h"

namespace quenchly::demo {
namespace {

constexpr int deepestNesting = 64;

}  // namespace

std::optional<Json> readObject(const std::filesystem::path& path)
{
    // What is nested deeper than anything the checker writes would use up the stack when it is written again.
    const auto isShallow = [](int depth, Json::parse_event_t, Json&) { return depth <= deepestNesting; };
    Json value = Json::parse(readFile(path).bytes, isShallow, false);
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
