#include "scripted_system.h"

#include "relative_time.h"

namespace quenchly::testing {

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
    system.loginItem = loginItem;
    system.userDefaults = defaults;
    system.openAddress = [opened = opened](const std::string& address) { return opened->add(address), true; };
    system.log = [this](const std::string& line) { log.push_back(line); };
    return system;
}

}  // namespace quenchly::testing
