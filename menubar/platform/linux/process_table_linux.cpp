#include "process_table_linux.h"

#include <fcntl.h>
#include <regex.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "descriptor.h"

namespace quenchly {

namespace {

constexpr std::size_t chunkSize = 4096;
constexpr std::size_t longestCommandLine = std::size_t{128} * 1024;
constexpr std::size_t recordedNameLength = 15;

constexpr std::size_t longestPattern = 1024;
constexpr std::size_t mostRepetitions = 1024;

class UsedLocale {
public:
    explicit UsedLocale(locale_t locale) : previous_(::uselocale(locale)) {}
    ~UsedLocale() { ::uselocale(previous_); }
    UsedLocale(const UsedLocale&) = delete;
    UsedLocale& operator=(const UsedLocale&) = delete;

private:
    locale_t previous_;
};

enum class Reading { done, denied, failed };

Reading readFile(int folder, const std::string& path, std::string& content)
{
    content.clear();
    const Descriptor file(::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        return errno == EACCES || errno == EPERM ? Reading::denied : Reading::failed;

    std::array<char, chunkSize> chunk;
    while (content.size() < longestCommandLine) {
        const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
        if (count < 0)
            return Reading::failed;
        content.append(chunk.data(), static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < chunk.size())
            break;
    }
    return Reading::done;
}

Reading readFile(int folder, ProcessId id, const char* name, std::string& content)
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

/// As pgrep sees text: "?" for control characters and for bytes that are no text.
std::string shown(std::string_view raw)
{
    std::string text;
    text.reserve(raw.size());
    while (!raw.empty()) {
        const auto byte = static_cast<unsigned char>(raw.front());
        std::size_t length = 1;
        if (byte < 0x80) {
            text += byte < 0x20 || byte == 0x7f ? '?' : raw.front();
        } else {
            std::mbstate_t state{};
            const std::size_t decoded = std::mbrtowc(nullptr, raw.data(), raw.size(), &state);
            length = decoded > raw.size() ? 1 : decoded;
            text += decoded > raw.size() ? std::string_view("?") : raw.substr(0, length);
        }
        raw.remove_prefix(length);
    }
    return text;
}

std::string joined(std::string arguments)
{
    arguments.resize(arguments.find_last_not_of('\0') + 1);
    std::ranges::replace(arguments, '\0', ' ');
    std::ranges::replace(arguments, '\n', ' ');
    return shown(arguments);
}

struct Status {
    std::string_view name;
    char state;
    unsigned long flags;

    static constexpr unsigned long kernelThread = 0x00200000;
};

std::string_view nextWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

/// The name may itself contain ") R (": it ends at the last parenthesis.
std::optional<Status> parseStatus(std::string_view stat)
{
    const std::size_t begin = stat.find('(');
    const std::size_t end = stat.rfind(')');
    if (begin == std::string_view::npos || end == std::string_view::npos || end < begin)
        return std::nullopt;

    std::string_view rest = stat.substr(end + 1);
    const std::string_view state = nextWord(rest);
    if (state.size() != 1)
        return std::nullopt;
    for (int skipped = 0; skipped < 5; ++skipped)
        nextWord(rest);
    const std::string_view word = nextWord(rest);
    unsigned long flags = 0;
    std::from_chars(word.data(), word.data() + word.size(), flags);
    return Status{stat.substr(begin + 1, end - begin - 1), state.front(), flags};
}

std::size_t largestBound(std::string_view interval)
{
    std::size_t largest = 1;
    const char* const end = interval.data() + interval.size();
    for (const char* at = interval.data(); at < end;) {
        std::size_t bound = 0;
        const auto [next, error] = std::from_chars(at, end, bound);
        if (error == std::errc::result_out_of_range || bound > mostRepetitions)
            return mostRepetitions + 1;
        largest = std::max(largest, bound);
        at = std::max(next, at + 1);
    }
    return largest;
}

/// The C library copies what is repeated, so nested bounds multiply up to gigabytes, and back references take
/// exponential time. Such an expression is refused, as is one that no program could be given as an argument.
bool isAffordable(std::string_view pattern)
{
    if (pattern.size() > longestPattern || pattern.find('\0') != std::string_view::npos)
        return false;
    std::size_t repetitions = 1;
    for (std::size_t at = 0; at < pattern.size() && repetitions <= mostRepetitions; ++at) {
        if (pattern[at] == '+')
            repetitions *= 2;
        if (pattern[at] == '{')
            repetitions *= largestBound(pattern.substr(at + 1, pattern.find('}', at) - at - 1));
        if (pattern[at] == '\\' && ++at < pattern.size() && pattern[at] >= '1' && pattern[at] <= '9')
            return false;
    }
    return repetitions <= mostRepetitions;
}

class Compiled {
public:
    explicit Compiled(const std::string& pattern)
        : isValid_(::regcomp(&expression_, pattern.c_str(), REG_EXTENDED | REG_NOSUB) == 0)
    {
    }
    ~Compiled()
    {
        if (isValid_)
            ::regfree(&expression_);
    }
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    bool isValid() const { return isValid_; }
    bool isIn(const std::string& text) const
    {
        return isValid_ && ::regexec(&expression_, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t expression_;
    bool isValid_;
};

/// Tried at every start, "a.*b" takes 25 seconds on 128 KiB of "a"; tied to the start it takes one pass. An unmatched
/// ")", which POSIX leaves undefined, would end the group early: only with one does another "(" in front compile.
std::string tiedToStart(const std::string& pattern)
{
    constexpr const char* invalid = "(";
    const bool isSound = Compiled(pattern).isValid() && !Compiled('(' + pattern).isValid();
    return isSound ? "^.*(" + pattern + ')' : invalid;
}

}  // namespace

class LinuxProcessTable::Expression : public Compiled {
public:
    explicit Expression(const std::string& pattern) : Compiled(tiedToStart(pattern)) {}
};

LinuxProcessTable::LinuxProcessTable(std::string root)
    : root_(std::move(root)), utf8_(::newlocale(LC_ALL_MASK, "C.UTF-8", nullptr))
{
}

LinuxProcessTable::~LinuxProcessTable()
{
    if (directory_ != nullptr)
        ::closedir(directory_);
    if (utf8_ != nullptr)
        ::freelocale(utf8_);
}

void LinuxProcessTable::beginRefresh()
{
    isListed_ = isCaughtUp_ = areNamesRead_ = areLinesRead_ = false;
}

std::vector<ProcessId> LinuxProcessTable::named(const std::string& name)
{
    std::vector<ProcessId> ids;
    if (name.empty())
        return ids;
    readNames();
    for (const Process& process : processes_) {
        if (isNamed(process, name))
            ids.push_back(process.entry.id);
    }
    return ids;
}

std::vector<ProcessId> LinuxProcessTable::matching(const std::string& pattern)
{
    std::vector<ProcessId> ids;
    if (!isAffordable(pattern))
        return ids;
    const UsedLocale utf8(utf8_);
    catchUp(pattern);
    readLines();
    const std::size_t index = question(pattern);
    for (Process& process : processes_) {
        if (process.entry.id != self_ && matches(process, index))
            ids.push_back(process.entry.id);
    }
    return ids;
}

std::map<ProcessId, std::string> LinuxProcessTable::states(const std::vector<ProcessId>& ids)
{
    std::map<ProcessId, std::string> states;
    list();
    std::string stat;
    for (const ProcessId id : ids) {
        // A thread has a folder too although the listing leaves it out.
        if (!std::ranges::binary_search(entries_, id, {}, &Entry::id))
            continue;
        if (readFile(folder(), id, "stat", stat) != Reading::done)
            continue;
        if (const auto status = parseStatus(stat))
            states[id] = std::string(1, status->state);
    }
    return states;
}

bool LinuxProcessTable::open()
{
    if (directory_ == nullptr) {
        directory_ = ::opendir(root_.c_str());
        if (directory_ != nullptr)
            identifyItself();
    }
    return directory_ != nullptr;
}

/// The system's clocks go by the ids of this process's namespace; a folder that tells other ids has none.
void LinuxProcessTable::identifyItself()
{
    const auto self = parseId(readLink(folder(), "self"));
    hasClocks_ = self == ProcessId{::getpid()};
    self_ = self.value_or(::getpid());
    tellsProcesses_ = hasClocks_ && isProcess(self_);
}

void LinuxProcessTable::list()
{
    if (std::exchange(isListed_, true))
        return;
    readEntries();
    adoptEntries();
    refreshesSinceListing_ = 0;
}

/// Enough for an expression that was asked before; everything else needs the listing.
void LinuxProcessTable::catchUp(const std::string& pattern)
{
    if (isListed_ || std::exchange(isCaughtUp_, true))
        return;
    const bool created = adoptCreated();
    if (!created || std::ranges::find(questions_, pattern, &Question::pattern) == questions_.end())
        list();
}

/// Adds the processes created since the last refresh; false when only a listing can tell. A process has its id a moment
/// before it can be found, hence the ids of two refreshes.
bool LinuxProcessTable::adoptCreated()
{
    const ProcessId newest = open() && tellsProcesses_ ? newestId().value_or(0) : 0;
    const ProcessId after = std::exchange(newestBefore_, std::exchange(newest_, newest));
    const bool isPlain = after > 0 && newest >= after && newest - after <= mostCreated;
    if (!isPlain || ++refreshesSinceListing_ >= listingInterval)
        return false;
    for (ProcessId id = after + 1; id <= newest; ++id)
        adoptIfProcess(id);
    for (Process& process : processes_)
        grow(process);
    return true;
}

void LinuxProcessTable::adoptIfProcess(ProcessId id)
{
    const auto place = std::ranges::lower_bound(processes_, id, {}, [](const Process& p) { return p.entry.id; });
    if ((place != processes_.end() && place->entry.id == id) || !isProcess(id))
        return;
    struct stat facts {};
    if (::fstatat(folder(), std::to_string(id).c_str(), &facts, 0) == 0)
        processes_.insert(place, Process{.entry = {id, facts.st_ino}});
}

/// The last word of "loadavg" is the id that was given out last.
std::optional<ProcessId> LinuxProcessTable::newestId() const
{
    std::string averages;
    if (readFile(folder(), "loadavg", averages) != Reading::done)
        return std::nullopt;
    while (averages.ends_with('\n'))
        averages.pop_back();
    return parseId(std::string_view(averages).substr(averages.rfind(' ') + 1));
}

void LinuxProcessTable::grow(Process& process)
{
    process.refreshes += process.refreshes < youngRefreshes ? 1 : 0;
}

void LinuxProcessTable::readEntries()
{
    entries_.clear();
    if (!open())
        return;
    ::rewinddir(directory_);
    while (const dirent* entry = ::readdir(directory_)) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9')
            continue;
        if (const auto id = parseId(entry->d_name))
            entries_.push_back({*id, entry->d_ino});
    }
    if (!std::ranges::is_sorted(entries_, {}, &Entry::id))
        std::ranges::sort(entries_, {}, &Entry::id);
}

void LinuxProcessTable::adoptEntries()
{
    // The kernel's stand-in where it has no inode to tell: proves nothing about being the same process.
    constexpr ino_t noInode = 1;

    previous_.swap(processes_);
    processes_.clear();
    auto known = previous_.begin();
    for (const Entry& entry : entries_) {
        while (known != previous_.end() && known->entry.id < entry.id)
            ++known;
        const bool isSame = known != previous_.end() && known->entry.id == entry.id &&
                            known->entry.inode == entry.inode && entry.inode != noInode;
        processes_.push_back(isSame ? std::move(*known) : Process{.entry = entry});
        grow(processes_.back());
    }
    previous_.clear();
}

LinuxProcessTable::ProcessorTime LinuxProcessTable::processorTime(Process& process) const
{
    timespec time;
    if (!hasClocks_)
        return unknownTime;
    if (process.clock == noClock && ::clock_getcpuclockid(static_cast<pid_t>(process.entry.id), &process.clock) != 0)
        return unknownTime;
    if (::clock_gettime(process.clock, &time) != 0)
        return unknownTime;
    return ProcessorTime{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// A process alone can change its name, and not without running.
void LinuxProcessTable::readNames()
{
    list();
    if (std::exchange(areNamesRead_, true))
        return;
    for (Process& process : processes_) {
        const ProcessorTime now = processorTime(process);
        if (now != unknownTime && now == process.nameReadAt)
            continue;
        const bool isRead = readFile(folder(), process.entry.id, "comm", process.name) == Reading::done;
        process.nameReadAt = isRead ? now : unknownTime;
        if (process.name.ends_with('\n'))
            process.name.pop_back();
    }
}

bool LinuxProcessTable::isNamed(const Process& process, const std::string& name) const
{
    if (process.name.size() != recordedNameLength)
        return process.name == name;
    return name.starts_with(process.name) && fullName(process) == name;
}

/// The record is the file's name cut at 15 bytes. The whole of it is the end of the program's path in the first
/// argument, in the link to the executable or, for a script, in one of its interpreter's arguments.
std::string LinuxProcessTable::fullName(const Process& process) const
{
    std::string line;
    readFile(folder(), process.entry.id, "cmdline", line);
    std::string executable = readLink(folder(), std::to_string(process.entry.id) + "/exe");
    constexpr std::string_view deleted = " (deleted)";
    if (executable.ends_with(deleted))
        executable.resize(executable.size() - deleted.size());

    std::vector<std::string_view> paths = firstArguments(line);
    paths.insert(paths.begin() + 1, executable);
    for (const std::string_view path : paths) {
        if (lastComponent(path).starts_with(process.name))
            return std::string(lastComponent(path));
    }
    return process.name;
}

bool LinuxProcessTable::isWatched(const Process& process)
{
    return process.refreshes < youngRefreshes || process.matched != 0;
}

void LinuxProcessTable::readLines()
{
    if (std::exchange(areLinesRead_, true))
        return;
    for (Process& process : processes_) {
        if (isWatched(process))
            lookAtLine(process);
    }
    lookAtShare();
    std::erase_if(processes_, [](const Process& process) { return process.isGone; });
}

/// Both bounds matter: the looks keep a quiet machine cheap, the readings a busy one.
void LinuxProcessTable::lookAtShare()
{
    if (processes_.empty())
        return;
    std::size_t looks = processes_.size() / lookShare + 1;
    std::size_t readings = processes_.size() / readShare + 1;
    auto next = std::ranges::lower_bound(processes_, nextShare_, {}, [](const Process& p) { return p.entry.id; });
    for (; looks > 0 && readings > 0; --looks, ++next) {
        if (next == processes_.end())
            next = processes_.begin();
        if (!isWatched(*next) && !next->isKernelThread && lookAtLine(*next))
            --readings;
    }
    nextShare_ = next == processes_.end() ? 0 : next->entry.id;
}

bool LinuxProcessTable::lookAtLine(Process& process)
{
    // The clock first: what the process does between the two calls then shows at the next look.
    const ProcessorTime now = processorTime(process);
    if (now != unknownTime && now == process.lineReadAt)
        return false;
    process.lineReadAt = now;
    readLine(process);
    return true;
}

void LinuxProcessTable::readLine(Process& process)
{
    std::string raw;
    const Reading reading = readFile(folder(), process.entry.id, "cmdline", raw);
    process.isHidden = reading == Reading::denied;
    process.isGone = reading == Reading::failed;

    const std::string before = std::exchange(process.line, joined(std::move(raw)));
    if (process.line.empty() && reading == Reading::done)
        readNameAsLine(process);
    if (process.line != before)
        process.judged = process.matched = 0;
}

/// Kernel threads and zombies have no command line; pgrep puts the name in brackets in its place.
void LinuxProcessTable::readNameAsLine(Process& process)
{
    std::string stat;
    readFile(folder(), process.entry.id, "stat", stat);
    const auto status = parseStatus(stat);
    process.isGone = !status;
    if (!status)
        return;
    process.isKernelThread = (status->flags & Status::kernelThread) != 0;
    process.line = '[' + shown(status->name) + ']' + (status->state == 'Z' ? " <defunct>" : "");
}

/// The place of the pattern in `questions_`; the one unasked for longest gives way to a new one.
std::size_t LinuxProcessTable::question(const std::string& pattern)
{
    auto found = std::ranges::find(questions_, pattern, &Question::pattern);
    const auto index = static_cast<std::size_t>(found - questions_.begin());
    if (found != questions_.end()) {
        found->askedAt = ++asked_;
        return index;
    }
    Question asked{pattern, std::make_unique<Expression>(pattern), ++asked_};
    if (index < std::numeric_limits<Answers>::digits) {
        questions_.push_back(std::move(asked));
        return index;
    }
    found = std::ranges::min_element(questions_, {}, &Question::askedAt);
    *found = std::move(asked);
    const auto replaced = static_cast<std::size_t>(found - questions_.begin());
    for (Process& process : processes_) {
        process.judged &= ~(Answers{1} << replaced);
        process.matched &= ~(Answers{1} << replaced);
    }
    return replaced;
}

bool LinuxProcessTable::matches(Process& process, std::size_t question)
{
    const Answers bit = Answers{1} << question;
    if ((process.judged & bit) == 0) {
        process.judged |= bit;
        if (!process.isHidden && questions_[question].expression->isIn(process.line))
            process.matched |= bit;
    }
    return (process.matched & bit) != 0;
}

std::unique_ptr<ProcessTable> makeProcessTable()
{
    return std::make_unique<LinuxProcessTable>();
}

}  // namespace quenchly
