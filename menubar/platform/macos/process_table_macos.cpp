#include "process_output.h"
#include "process_table.h"
#include "tool_output.h"

namespace quenchly {
namespace {

class ProcessTableMacos final : public ProcessTable {
public:
    void beginRefresh() override { answers_.clear(); }
    std::vector<ProcessId> named(const std::string& name) override { return answer("-x", name); }
    std::vector<ProcessId> matching(const std::string& pattern) override { return answer("-f", pattern); }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) override;

private:
    const std::vector<ProcessId>& answer(const std::string& option, const std::string& pattern);

    std::map<std::string, std::vector<ProcessId>> answers_;
};

std::vector<ProcessId> pgrep(const std::string& option, const std::string& pattern)
{
    std::vector<std::string> command{"/usr/bin/pgrep", option, pattern};
    // A label from a state file must not pass for another option.
    if (pattern.starts_with('-'))
        command.insert(command.end() - 1, "--");
    const auto result = runTool(command);
    return result && result->exitStatus == 0 ? parsePgrepOutput(result->standardOutput) : std::vector<ProcessId>();
}

const std::vector<ProcessId>& ProcessTableMacos::answer(const std::string& option, const std::string& pattern)
{
    const auto [entry, isNew] = answers_.try_emplace(option + pattern);
    if (isNew)
        entry->second = pgrep(option, pattern);
    return entry->second;
}

// The exit status is no help: ps fails when one of the ids is gone, and still prints the others.
std::map<ProcessId, std::string> ProcessTableMacos::states(const std::vector<ProcessId>& ids)
{
    if (ids.empty())
        return {};
    std::string list;
    for (const ProcessId id : ids)
        list += (list.empty() ? "" : ",") + std::to_string(id);
    const auto result = runTool({"/bin/ps", "-o", "pid=,stat=", "-p", list});
    return result ? parsePsStates(result->standardOutput) : std::map<ProcessId, std::string>();
}

}  // namespace

std::unique_ptr<ProcessTable> makeProcessTable()
{
    return std::make_unique<ProcessTableMacos>();
}

}  // namespace quenchly
