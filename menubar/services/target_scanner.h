#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "heat_state.h"
#include "listed_targets.h"
#include "process_table.h"

namespace quenchly {

/// One line of the list of AI targets.
struct TargetRow {
    enum class State { running, paused, unknown };

    Text name;
    State state = State::unknown;
    std::string_view detail;  ///< English, never empty in a scan's rows

    bool operator==(const TargetRow&) const = default;
};

/// Looks for the listed local AI servers among the running processes. Signals none. A search that fails finds nothing.
/// The system may have to be asked through child processes: not for the interface thread.
namespace TargetScanner {

/// The keys by which the listed targets are looked for, in the order of their rows.
inline constexpr auto knownTargets = [] {
    std::array<std::string_view, ListedTargets::all.size()> keys;
    std::ranges::transform(ListedTargets::all, keys.begin(),
                           [](const auto& target) { return target.keys.front().key; });
    return keys;
}();

/// How the processes of a target are told from others.
struct Search {
    using By = ListedTargets::SearchBy;

    By by = By::name;
    std::string pattern;  ///< the exact name, or an expression over the command line

    auto operator<=>(const Search&) const = default;
};
Search search(const Text& key);

Text displayName(const Text& key);

/// From the table's present listing, as is `processStopped`. Not used by the application itself: `rows` asks for all at
/// once.
std::vector<ProcessId> matchingPids(ProcessTable& table, const Text& key);
bool processStopped(ProcessTable& table, const Text& key);

struct Situation {
    std::vector<PausedEntry> paused;
    bool swapCritical = false;     ///< not read
    bool stillOverloaded = false;  ///< not read
    bool slowActive = false;
    bool workSavedOn = false;  ///< not read
    std::set<Text> throttledLabels;
    bool throttleActive = false;
};

/// At most so many different searches are made in one scan. A process table remembers as many expressions; a new one
/// costs hundreds of times as much as one that it remembers.
inline constexpr std::size_t mostSearches = 32;

/// The known targets in their order, then one row for each other paused label in the order of the list, all from one
/// new listing. For the labels beyond `mostSearches` the process that the checker recorded stands for the search.
std::vector<TargetRow> rows(ProcessTable& table, const Situation& situation);

/// Whether one of the known targets among a scan's rows is there. Rows of other labels never count.
bool anyListedLive(const std::vector<TargetRow>& rows);

}  // namespace TargetScanner
}  // namespace quenchly
