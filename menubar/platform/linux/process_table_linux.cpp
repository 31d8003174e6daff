#include "process_table_linux.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "command_line_expression.h"
#include "procfs.h"

namespace quenchly {
namespace {

/// A process is looked at on every refresh for so many of them.
constexpr int youngRefreshes = 10;

/// Of all processes, one in so many is looked at in a refresh, and read again at most one in so many. Both bounds
/// matter: the looks keep a quiet machine cheap, the readings a busy one.
constexpr std::size_t lookShare = 8;
constexpr std::size_t readShare = 32;

constexpr int listingInterval = 16;
/// With more ids given out since, the listing costs less than asking for each.
constexpr ProcessId mostCreated = 64;

/// Longer names are cut in the system's record.
constexpr std::size_t recordedNameLength = 15;

/// One bit for each remembered expression.
using Answers = std::uint32_t;
constexpr std::size_t mostQuestions = std::numeric_limits<Answers>::digits;

/// Nothing where unknown.
using ProcessorTime = std::optional<std::int64_t>;

struct Process {
    Procfs::Entry entry;
    int refreshes = 0;
    bool isKernelThread = false;
    bool isHidden = false;
    bool isGone = false;
    clockid_t clock = Procfs::noClock;
    ProcessorTime nameReadAt{};
    ProcessorTime lineReadAt{};
    std::string name{};
    std::string line{};
    Answers judged = 0;
    Answers matched = 0;

    bool isYoung() const { return refreshes < youngRefreshes; }
    bool isWatched() const { return isYoung() || matched != 0; }
    void grow() { refreshes += isYoung() ? 1 : 0; }
};

ProcessId idOf(const Process& process)
{
    return process.entry.id;
}

struct Question {
    std::string pattern;
    CommandLineExpression expression;
    std::uint64_t askedAt;
};

class LinuxProcessTable final : public ProcessTable {
public:
    explicit LinuxProcessTable(const std::string& procFolder) : procfs_(procFolder) {}

    void beginRefresh() override { isListed_ = isCaughtUp_ = areNamesRead_ = areLinesRead_ = false; }
    std::vector<ProcessId> named(const std::string& name) override;
    std::vector<ProcessId> matching(const std::string& pattern) override;
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) override;

private:
    void list();
    void catchUp(const std::string& pattern);
    bool adoptCreated();
    void adoptIfProcess(ProcessId id);

    void readNames();
    bool isNamed(const Process& process, const std::string& name) const;

    void readLines();
    void lookAtShare();
    bool lookAtLine(Process& process);
    void readLine(Process& process);

    std::vector<Question>::iterator remembered(const std::string& pattern);
    std::size_t question(const std::string& pattern);
    void forgetAnswers(std::size_t question);
    bool matches(Process& process, std::size_t question);

    Procfs procfs_;

    bool isListed_ = false;
    bool isCaughtUp_ = false;
    bool areNamesRead_ = false;
    bool areLinesRead_ = false;
    int refreshesSinceListing_ = 0;
    /// The newest id at the last refresh and at the one before it; 0 when unknown.
    ProcessId newest_ = 0;
    ProcessId newestBefore_ = 0;
    std::vector<Process> processes_;  // ascending
    /// Where the next look at a share of the processes begins.
    ProcessId nextShare_ = 0;

    std::vector<Question> questions_;
    std::uint64_t asked_ = 0;
};

std::vector<ProcessId> LinuxProcessTable::named(const std::string& name)
{
    std::vector<ProcessId> ids;
    if (name.empty())
        return ids;
    readNames();
    for (const Process& process : processes_) {
        if (isNamed(process, name))
            ids.push_back(idOf(process));
    }
    return ids;
}

std::vector<ProcessId> LinuxProcessTable::matching(const std::string& pattern)
{
    std::vector<ProcessId> ids;
    // Not worth remembering.
    if (pattern.size() > CommandLineExpression::longestPattern)
        return ids;
    catchUp(pattern);
    readLines();
    const std::size_t index = question(pattern);
    for (Process& process : processes_) {
        if (idOf(process) != procfs_.self() && matches(process, index))
            ids.push_back(idOf(process));
    }
    return ids;
}

std::map<ProcessId, std::string> LinuxProcessTable::states(const std::vector<ProcessId>& ids)
{
    std::map<ProcessId, std::string> states;
    list();
    for (const ProcessId id : ids) {
        // A thread has a state too although the listing leaves it out.
        if (!std::ranges::binary_search(processes_, id, {}, idOf))
            continue;
        if (const auto state = procfs_.state(id))
            states[id] = std::string(1, *state);
    }
    return states;
}

void LinuxProcessTable::list()
{
    if (std::exchange(isListed_, true))
        return;
    refreshesSinceListing_ = 0;

    std::vector<Process> previous = std::exchange(processes_, {});
    auto known = previous.begin();
    for (const Procfs::Entry& entry : procfs_.entries()) {
        known = std::find_if(known, previous.end(), [&](const Process& p) { return idOf(p) >= entry.id; });
        const bool isSame = known != previous.end() && idOf(*known) == entry.id && known->entry.inode == entry.inode &&
                            entry.inode != Procfs::noInode;
        processes_.push_back(isSame ? std::move(*known) : Process{.entry = entry});
        processes_.back().grow();
    }
}

/// Enough for an expression that was asked before; everything else needs the listing.
void LinuxProcessTable::catchUp(const std::string& pattern)
{
    if (isListed_ || std::exchange(isCaughtUp_, true))
        return;
    const bool created = adoptCreated();
    if (!created || remembered(pattern) == questions_.end())
        list();
}

/// Adds the processes created since the last refresh; false when only a listing can tell. A process has its id a moment
/// before it can be found, hence the ids of two refreshes.
bool LinuxProcessTable::adoptCreated()
{
    const ProcessId newest = procfs_.newestId().value_or(0);
    const ProcessId after = std::exchange(newestBefore_, std::exchange(newest_, newest));
    const bool isPlain = after > 0 && newest >= after && newest - after <= mostCreated;
    if (!isPlain || ++refreshesSinceListing_ >= listingInterval)
        return false;
    for (ProcessId id = after + 1; id <= newest; ++id)
        adoptIfProcess(id);
    for (Process& process : processes_)
        process.grow();
    return true;
}

void LinuxProcessTable::adoptIfProcess(ProcessId id)
{
    const auto place = std::ranges::lower_bound(processes_, id, {}, idOf);
    if (place != processes_.end() && idOf(*place) == id)
        return;
    if (const auto entry = procfs_.process(id))
        processes_.insert(place, Process{.entry = *entry});
}

/// A process alone can change its name, and not without running.
void LinuxProcessTable::readNames()
{
    list();
    if (std::exchange(areNamesRead_, true))
        return;
    for (Process& process : processes_) {
        const ProcessorTime now = procfs_.processorTime(idOf(process), process.clock);
        if (now && now == process.nameReadAt)
            continue;
        const auto name = procfs_.recordedName(idOf(process));
        process.nameReadAt = name ? now : std::nullopt;
        process.name = name.value_or("");
    }
}

bool LinuxProcessTable::isNamed(const Process& process, const std::string& name) const
{
    if (process.name.size() != recordedNameLength)
        return process.name == name;
    return name.starts_with(process.name) && procfs_.fullName(idOf(process), process.name) == name;
}

void LinuxProcessTable::readLines()
{
    if (std::exchange(areLinesRead_, true))
        return;
    for (Process& process : processes_) {
        if (process.isWatched())
            lookAtLine(process);
    }
    lookAtShare();
    std::erase_if(processes_, [](const Process& process) { return process.isGone; });
}

void LinuxProcessTable::lookAtShare()
{
    if (processes_.empty())
        return;
    std::size_t looks = processes_.size() / lookShare + 1;
    std::size_t readings = processes_.size() / readShare + 1;
    auto next = std::ranges::lower_bound(processes_, nextShare_, {}, idOf);
    for (; looks > 0 && readings > 0; --looks, ++next) {
        if (next == processes_.end())
            next = processes_.begin();
        if (!next->isWatched() && !next->isKernelThread && lookAtLine(*next))
            --readings;
    }
    nextShare_ = next == processes_.end() ? 0 : idOf(*next);
}

/// Whether the command line was read.
bool LinuxProcessTable::lookAtLine(Process& process)
{
    // The clock first: what the process does between the two calls then shows at the next look.
    const ProcessorTime now = procfs_.processorTime(idOf(process), process.clock);
    if (now && now == process.lineReadAt)
        return false;
    process.lineReadAt = now;
    readLine(process);
    return true;
}

void LinuxProcessTable::readLine(Process& process)
{
    using Access = Procfs::CommandLine::Access;

    Procfs::CommandLine line = procfs_.commandLine(idOf(process));
    process.isHidden = line.access == Access::denied;
    process.isGone = line.access == Access::gone;
    process.isKernelThread = line.isKernelThread;
    if (process.line != line.text)
        process.judged = process.matched = 0;
    process.line = std::move(line.text);
}

std::vector<Question>::iterator LinuxProcessTable::remembered(const std::string& pattern)
{
    return std::ranges::find(questions_, pattern, &Question::pattern);
}

/// The place of the pattern in `questions_`; the one unasked for longest gives way to a new one.
std::size_t LinuxProcessTable::question(const std::string& pattern)
{
    auto place = remembered(pattern);
    if (place != questions_.end()) {
        place->askedAt = ++asked_;
        return static_cast<std::size_t>(place - questions_.begin());
    }
    Question asked{pattern, CommandLineExpression(pattern), ++asked_};
    if (questions_.size() < mostQuestions) {
        questions_.push_back(std::move(asked));
        return questions_.size() - 1;
    }
    place = std::ranges::min_element(questions_, {}, &Question::askedAt);
    *place = std::move(asked);
    const auto index = static_cast<std::size_t>(place - questions_.begin());
    forgetAnswers(index);
    return index;
}

void LinuxProcessTable::forgetAnswers(std::size_t question)
{
    for (Process& process : processes_) {
        process.judged &= ~(Answers{1} << question);
        process.matched &= ~(Answers{1} << question);
    }
}

bool LinuxProcessTable::matches(Process& process, std::size_t question)
{
    const Answers bit = Answers{1} << question;
    if ((process.judged & bit) == 0) {
        process.judged |= bit;
        if (!process.isHidden && questions_[question].expression.isIn(process.line))
            process.matched |= bit;
    }
    return (process.matched & bit) != 0;
}

}  // namespace

std::unique_ptr<ProcessTable> makeLinuxProcessTable(const std::string& procFolder)
{
    return std::make_unique<LinuxProcessTable>(procFolder);
}

std::unique_ptr<ProcessTable> makeProcessTable()
{
    return makeLinuxProcessTable();
}

}  // namespace quenchly
