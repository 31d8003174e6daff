#include "target_scanner.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "target_status.h"
#include "verdict_story.h"

namespace quenchly::TargetScanner {
namespace {

using Ids = std::vector<ProcessId>;
using States = std::map<ProcessId, std::string>;
using By = Search::By;

constexpr std::string_view lmStudioService = "LM Studio.app/Contents/MacOS/LM Studio --run-as-service";

struct Target {
    std::string_view key;
    By by;
    std::string_view pattern;
    std::string_view displayName;
};

constexpr std::array<Target, 7> targets{{
    {"ollama", By::name, "ollama", "Ollama"},
    {"mlx", By::commandLine, "mlx_lm.server", "MLX LM Server"},
    {"lmstudio", By::commandLine, lmStudioService, "LM Studio"},
    {"llama-server", By::name, "llama-server", "llama.cpp"},
    {"mlx_lm.server", By::commandLine, "mlx_lm.server", "MLX LM Server"},
    {"lms", By::commandLine, lmStudioService, "LM Studio"},
    {"llama-cpp-server", By::name, "llama-cpp-server", "llama.cpp"},
}};

/// The keys are plain ASCII letters, to which no other text is equal as Unicode: the bytes tell, however long the
/// label.
bool isKey(const Text& label, std::string_view key)
{
    return label.utf8() == key;
}

const Target* targetOf(const Text& key)
{
    const auto found = std::ranges::find_if(targets, [&](const Target& target) { return isKey(key, target.key); });
    return found == targets.end() ? nullptr : &*found;
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

TargetRow row(const Text& key, const TargetStatusLogic::Facts& facts)
{
    using State = TargetRow::State;
    switch (TargetStatusLogic::resolve(facts).kind) {
        case TargetStatusKind::running:
            return {displayName(key), State::running, "running"};
        case TargetStatusKind::easedBack:
            return {displayName(key), State::paused, VerdictStoryLogic::easedBackTargetLine};
        case TargetStatusKind::idle:
            break;
    }
    return {displayName(key), State::unknown, "Idle"};
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
    if (const Target* target = targetOf(key))
        return {target->by, std::string(target->pattern)};
    return {key.utf8().find('.') != std::string::npos ? By::commandLine : By::name, key.utf8()};
}

Text displayName(const Text& key)
{
    const Target* target = targetOf(key);
    return target != nullptr ? Text(target->displayName) : key;
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
               std::ranges::any_of(knownTargets, [&](const Text key) { return displayName(key) == row.name; });
    });
}

}  // namespace quenchly::TargetScanner
