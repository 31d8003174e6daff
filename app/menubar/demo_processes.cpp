#include "demo_processes.h"

#include <set>
#include <string>
#include <utility>

#include "checker_contract.h"
#include "file_reading.h"
#include "heat_state.h"
#include "json_object.h"
#include "listed_targets.h"
#include "quarantine_display.h"
#include "target_scanner.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr ProcessId storyProcess = 4127;

/// The key of the target whose set-aside jobs have this label; a command's own name is its key.
Text listedKey(const std::string& rowLabel)
{
    for (const ListedTargets::Target& target : ListedTargets::all)
        if (target.launchdRowLabel == rowLabel)
            return Text(target.keys.front().key);
    return Text(rowLabel);
}

class DemoProcesses final : public ProcessTable {
public:
    explicit DemoProcesses(std::filesystem::path dataHome)
        : stateFolder_(std::move(dataHome) / CheckerContract::stateFolder)
    {
    }

    void beginRefresh() override
    {
        running_.clear();
        if (const auto state = HeatState::parse(readFile(stateFolder_ / CheckerContract::heatStateFile).bytes)) {
            for (const PausedEntry& entry : state->paused)
                add(entry.label);
            for (const QuarantinedEntry& entry : state->quarantined)
                add(listedKey(QuarantineDisplay::rowLabel(entry)));
        }
        if (const auto throttle = parseJsonObject(readFile(stateFolder_ / CheckerContract::throttleFile).bytes))
            for (const JsonObject& target : JsonObject(*throttle).objects("targets"))
                add(target.string("label").value_or(""));
    }

    std::vector<ProcessId> named(const std::string& name) override
    {
        return find({TargetScanner::Search::By::name, name});
    }

    std::vector<ProcessId> matching(const std::string& pattern) override
    {
        return find({TargetScanner::Search::By::commandLine, pattern});
    }

    std::map<ProcessId, std::string> states(const std::vector<ProcessId>&) override { return {{storyProcess, "S"}}; }

private:
    void add(const Text& label)
    {
        if (!label.empty())
            running_.insert(TargetScanner::search(label));
    }

    std::vector<ProcessId> find(const TargetScanner::Search& search) const
    {
        return running_.count(search) > 0 ? std::vector<ProcessId>{storyProcess} : std::vector<ProcessId>();
    }

    std::filesystem::path stateFolder_;
    std::set<TargetScanner::Search> running_;
};

}  // namespace

std::unique_ptr<ProcessTable> makeDemoProcesses(const std::filesystem::path& dataHome)
{
    return std::make_unique<DemoProcesses>(dataHome);
}

}  // namespace quenchly
