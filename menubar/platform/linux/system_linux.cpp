#include <sstream>
#include <system_error>

#include "application_item_linux.h"
#include "confined_home.h"
#include "current_instant.h"
#include "detached_process.h"
#include "font_language_linux.h"
#include "hardware_model_linux.h"
#include "live_sample.h"
#include "pasteboard.h"
#include "product.h"
#include "run_later.h"
#include "settings_files.h"
#include "settings_of_this_run.h"
#include "system.h"
#include "system_log_linux.h"
#include "user_folder.h"
#include "user_home.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

/// Where a system keeps the settings that its users may override. A home folder that was given explicitly has none.
std::vector<fs::path> systemSettingsFolders(const System& system)
{
    if (system.keepsToHomeFolder)
        return {};
    const auto variable = system.environment.find("XDG_CONFIG_DIRS");
    const bool isSet = variable != system.environment.end() && !variable->second.empty();
    std::vector<fs::path> folders;
    std::istringstream list(isSet ? variable->second : "/etc/xdg");
    for (std::string folder; std::getline(list, folder, ':');)
        if (fs::path(folder).is_absolute())
            folders.emplace_back(folder);
    return folders;
}

std::vector<fs::path> nodeRuntimes(const std::map<std::string, std::string>& environment)
{
    std::vector<fs::path> runtimes{"/usr/bin/node"};
    const auto variable = environment.find("PATH");
    std::istringstream list(variable != environment.end() ? variable->second : "");
    for (std::string folder; std::getline(list, folder, ':');)
        if (fs::path(folder).is_absolute())  // none that depends on the current directory
            runtimes.push_back(fs::path(folder) / "node");
    return runtimes;
}

void addSettings(System& system)
{
    const fs::path folder = settingsFolder.in(system);
    if (leadsOutOfHome(system, folder / autostartFile) || leadsOutOfHome(system, folder / defaultsFile)) {
        system.loginItem = makeLoginItemOfThisRun();
        system.userDefaults = makeUserDefaultsOfThisRun();
        return;
    }
    system.loginItem = makeLoginItem({.settingsFolder = folder,
                                      .systemSettingsFolders = systemSettingsFolders(system),
                                      .executable = system.applicationItem});
    system.userDefaults = makeUserDefaults(folder);
}

Trash trashOf(const System& system)
{
    const fs::path folder = dataFolder.in(system);
    if (leadsOutOfHome(system, folder / "Trash/files") || leadsOutOfHome(system, folder / "Trash/info"))
        return [](const fs::path&, const TrashCompletion& completion) {
            completion("The Trash of this home folder lies outside of it.");
        };
    return makeTrash(folder);
}

// QDesktopServices belongs to the interface thread, and waiting for that thread would hold up quitting.
bool openWithDesktop(const std::string& address, const std::map<std::string, std::string>& environment)
{
    const bool started = startDetached({.executable = "xdg-open", .arguments = {address}, .environment = environment});
    if (!started)
        writeToSystemLog("xdg-open cannot be started, which would open " + address);
    return started;
}

std::optional<std::string> systemControl(const std::string& name)
{
    return name == "hw.model" ? hardwareModel("/sys") : std::nullopt;
}

/// What acts on the desktop.
void addDesktop(System& system)
{
    system.application = makeRunningApplication();
    system.runAlert = runAlert;
    system.copyToPasteboard = copyToPasteboard;
    system.moveToTrash = trashOf(system);
    system.startUpdaterBackend = startUpdaterBackend;
    system.updateAdvice = "updates_by_package_manager";
    system.openAddress = [environment = system.environment](const std::string& address) {
        return openWithDesktop(address, environment);
    };
}

}  // namespace

System makeSystem(const std::optional<fs::path>& homeFolder)
{
    std::error_code ignored;
    const fs::path executable = fs::read_symlink("/proc/self/exe", ignored);

    System system;
    system.homeFolder = homeFolder ? fs::absolute(*homeFolder, ignored) : userHomeFolder();
    system.keepsToHomeFolder = homeFolder.has_value();
    system.currentDirectory = fs::current_path(ignored);
    system.executableFolder = executable.parent_path();
    system.launchAgentsFolder = system.homeFolder / "Library/LaunchAgents";
    system.environment = environmentForOthers();
    system.nodeRuntimes = nodeRuntimes(system.environment);
    system.applicationItem = applicationItem(executable, system.environment);
    system.bundleInfo = {{"CFBundleShortVersionString", version}};
    system.launchctl = "/bin/launchctl";
    system.now = currentInstant;
    system.sampleMetrics = LiveMetricsSampler::sample;
    system.processes = makeProcessTable();
    system.makeProcesses = makeProcessTable;
    system.runLater = runLater;
    system.sysctlString = systemControl;
    system.portOwner = [](std::uint16_t port) { return portOwner(port); };
    system.log = writeToSystemLog;
    addSettings(system);
    addDesktop(system);
    if (homeFolder)
        confineToHomeFolder(system);
    return system;
}

}  // namespace quenchly
