#include "scripted_system.h"

#include "relative_time.h"

namespace quenchly::testing {

namespace {

/// Every process is its name's only one; its id is the place of the name in the order of the names.
class TargetTable final : public ProcessTable {
public:
    explicit TargetTable(std::shared_ptr<ScriptedTargets> targets) : targets_(std::move(targets)) {}

    void beginRefresh() override
    {
        ++targets_->scans;
        states_ = targets_->states();
    }
    std::vector<ProcessId> named(const std::string& name) override { return find(name); }
    std::vector<ProcessId> matching(const std::string& pattern) override { return find(pattern); }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>& ids) override
    {
        std::map<ProcessId, std::string> answer;
        for (const ProcessId id : ids)
            answer[id] = std::next(states_.begin(), id - 1)->second;
        return answer;
    }

private:
    std::vector<ProcessId> find(const std::string& name) const
    {
        const auto found = states_.find(name);
        if (found == states_.end())
            return {};
        return {std::distance(states_.begin(), found) + 1};
    }

    std::shared_ptr<ScriptedTargets> targets_;
    std::map<std::string, std::string> states_;
};

}  // namespace

std::optional<std::size_t> ScriptedDesktop::answer(const Alert& alert)
{
    events.push_back("alert " + alert.title);
    alerts.push_back(alert);
    if (duringAlert)
        duringAlert(alert);
    if (answers.empty())
        return std::nullopt;
    const auto chosen = answers.front();
    answers.pop_front();
    return chosen;
}

ScriptedSystem::ScriptedSystem() : now(*RelativeTime::date("2026-03-01T12:00:00Z"))
{
    scratch.write("Library/LaunchAgents/com.brindlemoor.quenchly.plist", "<plist/>");
}

std::filesystem::path ScriptedSystem::home() const
{
    return scratch.path();
}

std::filesystem::path ScriptedSystem::dataHome() const
{
    return scratch / "Library/Application Support/Quenchly";
}

std::filesystem::path ScriptedSystem::agentFile() const
{
    return scratch / "Library/LaunchAgents/com.brindlemoor.quenchly.plist";
}

void ScriptedSystem::writeState(const std::string& name, const std::string& content) const
{
    scratch.replace(std::filesystem::path("Library/Application Support/Quenchly/state") / name, content);
}

System ScriptedSystem::system()
{
    System system;
    system.homeFolder = home();
    system.currentDirectory = scratch.makeFolder("work");
    system.executableFolder = scratch.makeFolder("program");
    system.launchAgentsFolder = home() / "Library/LaunchAgents";
    system.now = [this] { return now; };
    system.sampleMetrics = [this](bool swapCritical) {
        sampledWith.push_back(swapCritical);
        return sample;
    };
    system.processes = processes;
    system.makeProcesses = [targets = targets] { return std::make_unique<TargetTable>(targets); };
    system.loginItem = loginItem;
    system.userDefaults = defaults;
    system.openAddress = [opened = opened](const std::string& address) { return opened->add(address), true; };
    system.portOwner = [](std::uint16_t port) { return portOwner(port); };
    system.log = [this](const std::string& line) { log.push_back(line); };
    addDesktop(system);
    return system;
}

void ScriptedSystem::addDesktop(System& system)
{
    system.applicationItem = scratch / "Quenchly.app";
    system.application = std::make_shared<ScriptedApplication>(desktop);
    system.runAlert = [this](const Alert& alert) { return desktop.answer(alert); };
    system.copyToPasteboard = [this](const std::string& text) { desktop.events.push_back("copy " + text); };
    system.moveToTrash = [this](const std::filesystem::path& item, const TrashCompletion& completion) {
        desktop.events.push_back("trash " + item.string());
        completion(desktop.trashRefusal);
    };
    system.startUpdaterBackend = [] { return std::unique_ptr<UpdaterBackend>(); };
    system.runLater = [this](std::chrono::milliseconds delay, const std::function<void()>& task) {
        desktop.delays.push_back(delay);
        desktop.tasks.push_back(task);
    };
    system.sysctlString = [](const std::string&) { return std::optional<std::string>(); };
}

}  // namespace quenchly::testing
