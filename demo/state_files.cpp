#include "state_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <utility>

namespace quenchly::demo {

std::optional<Json> readObject(const std::filesystem::path& path)
{
    // A stream's own iterators throw on a folder; inserting its buffer only fails.
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    Json value = Json::parse(text.str(), nullptr, false);
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
    if (descriptor_ >= 0)
        ::flock(descriptor_, LOCK_EX);
}

FolderLock::~FolderLock()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

}  // namespace quenchly::demo
