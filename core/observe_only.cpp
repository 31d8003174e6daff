#include "observe_only.h"

#include "file_reading.h"
#include "json_object.h"
#include "text.h"
#include "user_home.h"

namespace quenchly::ObserveOnly {
namespace {

std::filesystem::path agentFile(const std::optional<std::filesystem::path>& launchAgentsDir)
{
    return (launchAgentsDir ? *launchAgentsDir : defaultLaunchAgentsDir()) / agentPlistName;
}

}  // namespace

std::filesystem::path defaultLaunchAgentsDir()
{
    return userHomeFolder() / "Library/LaunchAgents";
}

bool isAgentInstalled(const std::optional<std::filesystem::path>& launchAgentsDir)
{
    return fileExists(agentFile(launchAgentsDir));
}

bool isManagementDisabled(const std::filesystem::path& dataHome)
{
    const auto object =
        parseJsonObject(readFile(dataHome / CheckerContract::stateFolder / CheckerContract::managedFile).bytes);
    return object && JsonObject(*object).nonEmptyString("disabledAt");
}

bool runsDry(const std::optional<std::filesystem::path>& launchAgentsDir)
{
    const std::string text = readFile(agentFile(launchAgentsDir)).bytes;
    return text.find("--dry-run") != std::string::npos && isValidUtf8(text);
}

bool isActive(const Folders& folders)
{
    return installation(folders).observeOnly;
}

Installation installation(const Folders& folders)
{
    Installation found;
    found.managementDisabled = isManagementDisabled(folders.dataHome);
    found.observeOnly = found.managementDisabled || runsDry(folders.launchAgentsDir);
    found.agentInstalled = isAgentInstalled(folders.launchAgentsDir);
    return found;
}

}  // namespace quenchly::ObserveOnly
