#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quenchly {

using ProcessId = std::int64_t;

/// The processes of this machine as seen at one moment. Every question between two calls of `beginRefresh` is answered
/// from one listing. No call fails: what cannot be read is left out. Each instance belongs to one thread.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;

    /// Forgets the listing; the next question makes a new one.
    virtual void beginRefresh() = 0;

    /// Ids of the processes whose name is exactly `name`, ascending. A name longer than the system's record of it is
    /// found too, and never taken for another that starts alike. No process has an empty name.
    virtual std::vector<ProcessId> named(const std::string& name) = 0;

    /// Ids of the processes whose whole command line (arguments joined by blanks) contains a match of the POSIX
    /// extended regular expression `pattern`, ascending, this process excluded. An invalid expression matches nothing,
    /// and so may one that is very large or goes beyond POSIX, as back references do; the empty one matches everything.
    virtual std::vector<ProcessId> matching(const std::string& pattern) = 0;

    /// The states of the given processes: first the letter that ps prints ("S", "R", "T", "Z", ...), perhaps followed
    /// by its modifiers ("Ss+"). Ids that are gone are absent.
    virtual std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) = 0;
};

/// The running system's table.
std::unique_ptr<ProcessTable> makeProcessTable();

}  // namespace quenchly
