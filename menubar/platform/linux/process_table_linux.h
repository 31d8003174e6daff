#pragma once

#include <dirent.h>
#include <locale.h>
#include <time.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "process_table.h"

namespace quenchly {

/// The process table read from a folder laid out as `/proc`.
///
/// A process is known by its id and the inode number of its entry, which the listing gives for nothing: a reused id has
/// another inode. Neither changes on exec, but only a process that has used processor time can have called exec or
/// rewritten its arguments. So a known process is looked at, which costs one reading of its clock, and its command line
/// is read again only if it has run since:
/// - on every refresh while it is young or matches something: a fork followed by exec is noticed at the next refresh,
///   and so is the end of a match;
/// - else in turn: an exec in a long-running process is noticed within `lookShare` refreshes, or within `readShare`
///   where more than about a quarter of the machine's processes have run in between.
/// Where there is no clock to read, every look counts as having run.
///
/// Listing every process is the greater part of a refresh, and ids are given out in ascending order. So a question that
/// was asked before needs no listing: what is new is among the few ids given out since, and what matched is watched.
/// Every `listingInterval` refreshes the listing is made all the same, and whenever the ids tell too little.
class LinuxProcessTable final : public ProcessTable {
public:
    static constexpr int youngRefreshes = 10;
    static constexpr std::size_t lookShare = 8;
    static constexpr std::size_t readShare = 32;
    static constexpr int listingInterval = 16;
    static constexpr ProcessId mostCreated = 64;

    explicit LinuxProcessTable(std::string root = "/proc");
    ~LinuxProcessTable() override;
    LinuxProcessTable(const LinuxProcessTable&) = delete;
    LinuxProcessTable& operator=(const LinuxProcessTable&) = delete;

    void beginRefresh() override;
    std::vector<ProcessId> named(const std::string& name) override;
    std::vector<ProcessId> matching(const std::string& pattern) override;
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) override;

private:
    /// One bit for each expression in `questions_`.
    using Answers = std::uint32_t;

    /// Nanoseconds of processor time; below zero where unknown.
    using ProcessorTime = std::int64_t;
    static constexpr ProcessorTime unknownTime = -1;

    /// Clocks of processes have negative numbers.
    static constexpr clockid_t noClock = 0;

    struct Entry {
        ProcessId id;
        ino_t inode;
    };

    struct Process {
        Entry entry;
        int refreshes = 0;
        bool isKernelThread = false;
        bool isHidden = false;
        bool isGone = false;
        clockid_t clock = noClock;
        ProcessorTime nameReadAt = unknownTime;
        ProcessorTime lineReadAt = unknownTime;
        std::string name{};
        std::string line{};
        Answers judged = 0;
        Answers matched = 0;
    };

    class Expression;
    struct Question {
        std::string pattern;
        std::unique_ptr<Expression> expression;
        std::uint64_t askedAt;
    };

    bool open();
    void identifyItself();
    void list();
    void catchUp(const std::string& pattern);
    bool adoptCreated();
    void adoptIfProcess(ProcessId id);
    std::optional<ProcessId> newestId() const;
    static void grow(Process& process);
    void readEntries();
    void adoptEntries();

    void readNames();
    bool isNamed(const Process& process, const std::string& name) const;
    std::string fullName(const Process& process) const;

    void readLines();
    void lookAtShare();
    bool lookAtLine(Process& process);
    void readLine(Process& process);
    void readNameAsLine(Process& process);
    static bool isWatched(const Process& process);

    std::size_t question(const std::string& pattern);
    bool matches(Process& process, std::size_t question);
    ProcessorTime processorTime(Process& process) const;
    int folder() const { return dirfd(directory_); }

    std::string root_;
    DIR* directory_ = nullptr;
    locale_t utf8_;
    ProcessId self_ = 0;
    bool hasClocks_ = false;
    bool tellsProcesses_ = false;

    bool isListed_ = false;
    bool isCaughtUp_ = false;
    int refreshesSinceListing_ = 0;
    /// The newest id at the last refresh and at the one before it; 0 when unknown.
    ProcessId newest_ = 0;
    ProcessId newestBefore_ = 0;
    bool areNamesRead_ = false;
    bool areLinesRead_ = false;
    std::vector<Entry> entries_;
    std::vector<Process> processes_;
    std::vector<Process> previous_;
    ProcessId nextShare_ = 0;

    std::vector<Question> questions_;
    std::uint64_t asked_ = 0;
};

}  // namespace quenchly
