#include "file_reading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "descriptor.h"
#include "stat_times.h"

namespace quenchly {
namespace {

std::int64_t nanoseconds(const std::timespec& time)
{
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

FileStamp stampOf(const struct stat& facts)
{
    const StatTimes times = timesOf(facts);
    return {.device = static_cast<std::uint64_t>(facts.st_dev),
            .inode = static_cast<std::uint64_t>(facts.st_ino),
            .size = static_cast<std::int64_t>(facts.st_size),
            .modifiedAt = nanoseconds(times.modified),
            .changedAt = nanoseconds(times.changed)};
}

ssize_t readRetrying(int fd, char* to, std::size_t count)
{
    ssize_t got;
    do
        got = read(fd, to, count);
    while (got < 0 && errno == EINTR);
    return got;
}

FileReading readToEnd(int fd, std::size_t expected)
{
    using Outcome = FileReading::Outcome;
    std::string bytes;
    std::size_t size = 0;
    std::size_t capacity = std::min(expected, maxFileBytes) + 1;  // one more, so that the end is seen at once
    for (;;) {
        bytes.resize(capacity);
        const ssize_t got = readRetrying(fd, bytes.data() + size, capacity - size);
        if (got < 0)
            return {Outcome::unreadable, {}, {}};
        size += static_cast<std::size_t>(got);
        if (size > maxFileBytes)
            return {Outcome::tooLarge, {}, {}};
        if (got == 0)
            break;
        if (size == capacity)
            capacity = std::min(capacity * 2, maxFileBytes + 1);
    }
    bytes.resize(size);
    return {Outcome::read, std::move(bytes), {}};
}

}  // namespace

std::optional<FileStamp> fileStamp(const std::filesystem::path& path) noexcept
{
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0)
        return std::nullopt;
    return stampOf(facts);
}

FileReading readFile(const std::filesystem::path& path)
{
    using Outcome = FileReading::Outcome;
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.number() < 0)
        return {fileExists(path) ? Outcome::unreadable : Outcome::missing, {}, {}};
    struct stat facts {};
    if (fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {Outcome::unreadable, {}, {}};
    FileReading reading = facts.st_size > static_cast<off_t>(maxFileBytes)
                              ? FileReading{Outcome::tooLarge, {}, {}}
                              : readToEnd(file.number(), static_cast<std::size_t>(facts.st_size));
    reading.stamp = stampOf(facts);
    return reading;
}

bool fileExists(const std::filesystem::path& path) noexcept
{
    return fileStamp(path).has_value();
}

}  // namespace quenchly
