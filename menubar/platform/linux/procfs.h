#pragma once

#include <dirent.h>
#include <time.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "process_table.h"

namespace quenchly {

/// Reads a folder laid out as `/proc`. Nothing that it tells of processes is kept; the folder itself stays open once it
/// could be opened. Objects belong to one thread each.
class Procfs {
public:
    /// A reused id has another inode number; neither changes on exec.
    struct Entry {
        ProcessId id = 0;
        ino_t inode = 0;
    };
    /// The system's stand-in where it has no inode to tell: proves nothing about being the same process.
    static constexpr ino_t noInode = 1;

    struct CommandLine {
        enum class Access { read, denied, gone };

        Access access = Access::read;
        /// As pgrep searches it: of a process without arguments the name in brackets. Empty where it could not be read.
        std::string text{};
        bool isKernelThread = false;
    };

    explicit Procfs(std::string root);

    /// Ascending, without threads. None where the folder cannot be read.
    std::vector<Entry> entries();

    /// The id that was given out last, to a process or a thread. Nothing where the folder is not that of this process's
    /// own ids or the system is too old to tell threads from processes.
    std::optional<ProcessId> newestId();

    /// Nothing for a thread and for a process that is gone. To be asked for ids up to `newestId` only.
    std::optional<Entry> process(ProcessId id) const;

    /// This process's own id.
    ProcessId self() const { return self_; }

    /// Nanoseconds of processor time; nothing where it cannot be told. `clock` keeps what was found out about the
    /// process's clock from one reading to the next; `noClock` at first.
    std::optional<std::int64_t> processorTime(ProcessId id, clockid_t& clock) const;
    static constexpr clockid_t noClock = 0;  // those of processes are negative

    /// The name in the system's record, cut at 15 bytes; nothing where it cannot be read.
    std::optional<std::string> recordedName(ProcessId id) const;

    /// The whole of a recorded name that may have been cut.
    std::string fullName(ProcessId id, std::string_view recordedName) const;

    CommandLine commandLine(ProcessId id) const;

    /// The letter that ps prints; nothing where it cannot be read.
    std::optional<char> state(ProcessId id) const;

private:
    struct Close {
        void operator()(DIR* directory) const { ::closedir(directory); }
    };

    bool open();
    void identifyItself();
    int folder() const { return ::dirfd(directory_.get()); }
    void readNameAsText(ProcessId id, CommandLine& line) const;

    std::string root_;
    std::unique_ptr<DIR, Close> directory_;
    ProcessId self_ = 0;
    bool hasClocks_ = false;
    bool tellsProcesses_ = false;
};

}  // namespace quenchly
