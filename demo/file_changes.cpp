#include "file_changes.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace quenchly::demo {
namespace {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::error_code writeAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ::ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0)
            return lastError();
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code fillAndClose(int descriptor, std::string_view text)
{
    const std::error_code failure = writeAll(descriptor, text);
    if (::close(descriptor) != 0 && !failure)
        return lastError();
    return failure;
}

std::error_code renameOver(const std::string& from, const std::filesystem::path& to)
{
    return std::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

std::error_code replaceFile(const std::filesystem::path& path, std::string_view text)
{
    std::error_code failure;
    std::filesystem::create_directories(path.parent_path(), failure);
    if (failure)
        return failure;
    std::string temporary = path.string() + ".XXXXXX";
    const int descriptor = ::mkstemp(temporary.data());
    if (descriptor < 0)
        return lastError();
    failure = fillAndClose(descriptor, text);
    if (!failure)
        failure = renameOver(temporary, path);
    if (failure)
        ::unlink(temporary.c_str());
    return failure;
}

std::string description(std::string_view action, const std::filesystem::path& path, const std::error_code& failure)
{
    return "cannot " + std::string(action) + " " + path.string() + ": " + failure.message();
}

}  // namespace

std::optional<std::string> apply(const FileChanges& changes)
{
    for (const FileWrite& write : changes.writes)
        if (const std::error_code failure = replaceFile(write.path, write.text))
            return description("write", write.path, failure);
    for (const std::filesystem::path& path : changes.removals) {
        std::error_code failure;
        if (!std::filesystem::remove(path, failure) && failure)
            return description("remove", path, failure);
    }
    return std::nullopt;
}

}  // namespace quenchly::demo
