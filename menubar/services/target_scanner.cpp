#include "target_scanner.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>

#include "target_status.h"

namespace quenchly::TargetScanner {
namespace {

using Ids = std::vector<ProcessId>;
using States = std::map<ProcessId, std::string>;
using By = Search::By;

struct Listing {
    const ListedTargets::Target* target;
    const ListedTargets::Key* key;
};

/// The keys are plain ASCII letters, to which no other text is equal as Unicode: the bytes tell, however long the
/// label.
bool isKey(const Text& label, std::string_view key)
{
    return label.utf8() == key;
}

/// What the table says about a key; none for one that is not in it.
std::optional<Listing> listing(const Text& key)
{
    for (const ListedTargets::Target& target : ListedTargets::all)
        for (const ListedTargets::Key& candidate : target.keys)
            if (isKey(key, candidate.key))
                return Listing{&target, &candidate};
    return std::nullopt;
}

bool isKnown(const Text& label)
{
    return std::ranges::any_of(knownTargets, [&](std::string_view key) { return isKey(label, key); });
}

bool isPaused(const std::vector<PausedEntry>& paused, std::string_view key)
{
    return std::ranges::any_of(paused, [&](const PausedEntry& entry) { return isKey(entry.label, key); });
}

Ids processesOf(ProcessTable& table, const Search& search)
{
    return search.by == By::name ? table.named(search.pattern) : table.matching(search.pattern);
}

bool anyStopped(const Ids& ids, const States& states)
{
    return std::ranges::any_of(ids, [&](ProcessId id) {
        const auto found = states.find(id);
        return found != states.end() && found->second.starts_with('T');
    });
}

/// Makes each search of one scan once.
class Searches {
public:
    explicit Searches(ProcessTable& table) : table_(table) {}

    /// Null for a search beyond the bound.
    const Ids* find(const Text& key)
    {
        const Search wanted = search(key);
        if (const auto found = made_.find(wanted); found != made_.end())
            return &found->second;
        if (made_.size() == mostSearches)
            return nullptr;
        return &made_.emplace(wanted, processesOf(table_, wanted)).first->second;
    }

private:
    ProcessTable& table_;
    std::map<Search, Ids> made_;
};

TargetRow::State stateOf(TargetStatusKind kind)
{
    switch (kind) {
        case TargetStatusKind::running:
            return TargetRow::State::running;
        case TargetStatusKind::easedBack:
            return TargetRow::State::paused;
        case TargetStatusKind::idle:
            break;
    }
    return TargetRow::State::unknown;
}

TargetRow row(const Text& key, const TargetStatusLogic::Facts& facts)
{
    const auto [kind, detail] = TargetStatusLogic::resolve(facts);
    return {displayName(key), stateOf(kind), detail};
}

std::vector<TargetRow> knownRows(ProcessTable& table, Searches& searches, const Situation& situation)
{
    Ids all;
    for (const Text key : knownTargets)
        std::ranges::copy(*searches.find(key), std::back_inserter(all));
    const States states = table.states(all);

    std::vector<TargetRow> rows;
    for (const Text key : knownTargets) {
        const Ids& ids = *searches.find(key);
        rows.push_back(row(key, {.processPresent = !ids.empty(),
                                 .listedInPaused = isPaused(situation.paused, key.utf8()),
                                 .processStopped = anyStopped(ids, states),
                                 .slowOrThrottle = situation.throttleActive || situation.slowActive ||
                                                   situation.throttledLabels.contains(key)}));
    }
    return rows;
}

/// Being paused decides, so that neither the states nor the flags are asked for.
std::vector<TargetRow> extraRows(ProcessTable& table, Searches& searches, const std::vector<PausedEntry>& paused)
{
    struct Extra {
        const PausedEntry& entry;
        const Ids* found;
    };
    std::vector<Extra> extras;
    Ids recorded;
    for (const PausedEntry& entry : paused) {
        if (isKnown(entry.label))
            continue;
        extras.push_back({entry, searches.find(entry.label)});
        if (extras.back().found == nullptr && entry.pid > 0)
            recorded.push_back(entry.pid);
    }
    const States states = table.states(recorded);

    std::vector<TargetRow> rows;
    for (const auto& [entry, found] : extras) {
        const bool isPresent = found != nullptr ? !found->empty() : states.contains(entry.pid);
        rows.push_back(row(entry.label, {.processPresent = isPresent, .listedInPaused = true}));
    }
    return rows;
}

}  // namespace

Search search(const Text& key)
{
    if (const auto listed = listing(key))
        return {listed->key->by, std::string(listed->key->pattern)};
    return {key.utf8().find('.') != std::string::npos ? By::commandLine : By::name, key.utf8()};
}

Text displayName(const Text& key)
{
    const auto listed = listing(key);
    return listed ? Text(listed->target->displayName) : key;
}

std::vector<ProcessId> matchingPids(ProcessTable& table, const Text& key)
{
    return processesOf(table, search(key));
}

bool processStopped(ProcessTable& table, const Text& key)
{
    const Ids ids = matchingPids(table, key);
    return anyStopped(ids, table.states(ids));
}

std::vector<TargetRow> rows(ProcessTable& table, const Situation& situation)
{
    table.beginRefresh();
    Searches searches(table);
    std::vector<TargetRow> rows = knownRows(table, searches, situation);
    std::ranges::move(extraRows(table, searches, situation.paused), std::back_inserter(rows));
    return rows;
}

bool anyListedLive(const std::vector<TargetRow>& rows)
{
    // Another label's row may bear a known name, as "llama-cpp-server" does.
    const std::size_t known = std::min(rows.size(), knownTargets.size());
    return std::any_of(rows.begin(), rows.begin() + known, [](const TargetRow& row) {
        return row.state != TargetRow::State::unknown &&
               std::ranges::any_of(ListedTargets::all,
                                   [&](const auto& target) { return row.name == target.displayName; });
    });
}

}  // namespace quenchly::TargetScanner
