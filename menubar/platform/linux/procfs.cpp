#include "procfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <utility>

#include "descriptor.h"
#include "procfs_text.h"

namespace quenchly {
namespace {

constexpr std::size_t chunkSize = 4096;
constexpr std::size_t longestCommandLine = std::size_t{128} * 1024;

using Access = Procfs::CommandLine::Access;

Access readFile(int folder, const std::string& path, std::string& content)
{
    content.clear();
    const Descriptor file(::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        return errno == EACCES || errno == EPERM ? Access::denied : Access::gone;

    std::array<char, chunkSize> chunk;
    while (content.size() < longestCommandLine) {
        const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
        if (count < 0)
            return Access::gone;
        content.append(chunk.data(), static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < chunk.size())
            break;
    }
    return Access::read;
}

Access readFile(int folder, ProcessId id, const char* name, std::string& content)
{
    return readFile(folder, std::to_string(id) + '/' + name, content);
}

/// A thread has an id and a folder too, but cannot be opened as a process.
bool isProcess(ProcessId id)
{
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))).number() >= 0;
}

std::string readLink(int folder, const std::string& path)
{
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlinkat(folder, path.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

std::optional<ProcessId> parseId(std::string_view text)
{
    ProcessId id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id <= 0)
        return std::nullopt;
    return id;
}

/// The program and what may stand between an interpreter and its script; never empty.
std::vector<std::string_view> firstArguments(std::string_view line)
{
    constexpr std::size_t enough = 8;
    std::vector<std::string_view> arguments;
    do {
        arguments.push_back(line.substr(0, line.find('\0')));
        line.remove_prefix(std::min(arguments.back().size() + 1, line.size()));
    } while (!line.empty() && arguments.size() < enough);
    return arguments;
}

std::string_view lastComponent(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

Procfs::Procfs(std::string root) : root_(std::move(root)) {}

bool Procfs::open()
{
    if (!directory_) {
        directory_.reset(::opendir(root_.c_str()));
        if (directory_)
            identifyItself();
    }
    return directory_ != nullptr;
}

/// The system's clocks go by the ids of this process's namespace; a folder that tells other ids has none.
void Procfs::identifyItself()
{
    const auto self = parseId(readLink(folder(), "self"));
    hasClocks_ = self == ProcessId{::getpid()};
    self_ = self.value_or(::getpid());
    tellsProcesses_ = hasClocks_ && isProcess(self_);
}

std::vector<Procfs::Entry> Procfs::entries()
{
    std::vector<Entry> entries;
    if (!open())
        return entries;
    ::rewinddir(directory_.get());
    while (const dirent* entry = ::readdir(directory_.get())) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9')
            continue;
        if (const auto id = parseId(entry->d_name))
            entries.push_back({*id, entry->d_ino});
    }
    if (!std::ranges::is_sorted(entries, {}, &Entry::id))
        std::ranges::sort(entries, {}, &Entry::id);
    return entries;
}

/// The last word of "loadavg".
std::optional<ProcessId> Procfs::newestId()
{
    std::string averages;
    if (!open() || !tellsProcesses_ || readFile(folder(), "loadavg", averages) != Access::read)
        return std::nullopt;
    while (averages.ends_with('\n'))
        averages.pop_back();
    return parseId(std::string_view(averages).substr(averages.rfind(' ') + 1));
}

std::optional<Procfs::Entry> Procfs::process(ProcessId id) const
{
    struct stat facts {};
    if (!isProcess(id) || ::fstatat(folder(), std::to_string(id).c_str(), &facts, 0) != 0)
        return std::nullopt;
    return Entry{id, facts.st_ino};
}

std::optional<std::int64_t> Procfs::processorTime(ProcessId id, clockid_t& clock) const
{
    timespec time;
    if (!hasClocks_)
        return std::nullopt;
    if (clock == noClock && ::clock_getcpuclockid(static_cast<pid_t>(id), &clock) != 0)
        return std::nullopt;
    if (::clock_gettime(clock, &time) != 0)
        return std::nullopt;
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::optional<std::string> Procfs::recordedName(ProcessId id) const
{
    std::string name;
    if (readFile(folder(), id, "comm", name) != Access::read)
        return std::nullopt;
    if (name.ends_with('\n'))
        name.pop_back();
    return name;
}

/// It is the end of the program's path in the first argument, in the link to the executable or, for a script, in one of
/// its interpreter's arguments.
std::string Procfs::fullName(ProcessId id, std::string_view recordedName) const
{
    std::string line;
    readFile(folder(), id, "cmdline", line);
    std::string executable = readLink(folder(), std::to_string(id) + "/exe");
    constexpr std::string_view deleted = " (deleted)";
    if (executable.ends_with(deleted))
        executable.resize(executable.size() - deleted.size());

    std::vector<std::string_view> paths = firstArguments(line);
    paths.insert(paths.begin() + 1, executable);
    for (const std::string_view path : paths) {
        if (lastComponent(path).starts_with(recordedName))
            return std::string(lastComponent(path));
    }
    return std::string(recordedName);
}

Procfs::CommandLine Procfs::commandLine(ProcessId id) const
{
    std::string arguments;
    CommandLine line{.access = readFile(folder(), id, "cmdline", arguments)};
    line.text = joinedArguments(std::move(arguments));
    if (line.text.empty() && line.access == Access::read)
        readNameAsText(id, line);
    return line;
}

/// Kernel threads and zombies have no command line; pgrep puts the name in brackets in its place.
void Procfs::readNameAsText(ProcessId id, CommandLine& line) const
{
    std::string content;
    readFile(folder(), id, "stat", content);
    const auto stat = parseStat(content);
    if (!stat) {
        line.access = Access::gone;
        return;
    }
    line.isKernelThread = stat->isKernelThread;
    line.text = '[' + printable(stat->name) + ']' + (stat->state == 'Z' ? " <defunct>" : "");
}

std::optional<char> Procfs::state(ProcessId id) const
{
    std::string content;
    if (readFile(folder(), id, "stat", content) != Access::read)
        return std::nullopt;
    const auto stat = parseStat(content);
    return stat ? std::optional(stat->state) : std::nullopt;
}

}  // namespace quenchly
