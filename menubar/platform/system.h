#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "alert.h"
#include "bundle_info.h"
#include "checker_contract.h"
#include "heat_state.h"
#include "instant.h"
#include "login_item.h"
#include "port_owner.h"
#include "process_table.h"
#include "running_application.h"
#include "trash.h"
#include "updater_backend.h"
#include "user_defaults.h"

namespace quenchly {

/// Everything that the services take from the world around them. The application builds the real one with
/// `makeSystem`; a test replaces the parts that it scripts.
struct System {
    /// The home folder of the user database, not of the HOME variable.
    std::filesystem::path homeFolder;
    /// Nothing outside of the home folder is to be changed, also not through a symbolic link in it.
    bool keepsToHomeFolder = false;
    std::filesystem::path currentDirectory;
    /// The folder of the running program, where a tool shipped with it lies.
    std::filesystem::path executableFolder;
    std::filesystem::path launchAgentsFolder;
    std::map<std::string, std::string> environment;
    /// Where this system itself may have a Node runtime, the best place first.
    std::vector<std::filesystem::path> nodeRuntimes;
    /// What a person puts into the Trash to be rid of this program: the bundle, the AppImage or the executable.
    std::filesystem::path applicationItem;
    /// A program without a bundle tells its version and nothing else.
    BundleInfo bundleInfo;
    /// The program that controls launchd; empty when it must not be run.
    std::filesystem::path launchctl;
    /// Where on 127.0.0.1 the tool serves its dashboard.
    std::uint16_t dashboardPort = CheckerContract::dashboardPort;

    std::function<Instant()> now;
    /// One live reading of load and swap; see LiveMetricsSampler::sample.
    std::function<std::optional<LastMetrics>(bool swapCritical)> sampleMetrics;
    std::shared_ptr<ProcessTable> processes;
    /// Another table, for use on another thread.
    std::function<std::unique_ptr<ProcessTable>()> makeProcesses;
    std::shared_ptr<LoginItem> loginItem;
    std::shared_ptr<UserDefaults> userDefaults;
    std::shared_ptr<RunningApplication> application;
    std::function<std::optional<std::size_t>(const Alert& alert)> runAlert;
    std::function<void(const std::string& text)> copyToPasteboard;
    Trash moveToTrash;
    std::function<std::unique_ptr<UpdaterBackend>()> startUpdaterBackend;
    /// The key of a sentence on how else this system updates programs; empty when it does not.
    std::string updateAdvice;
    std::function<void(std::chrono::milliseconds delay, const std::function<void()>& task)> runLater;
    /// A system control that is a text; none when it cannot be read. Other systems answer "hw.model" only.
    std::function<std::optional<std::string>(const std::string& name)> sysctlString;
    /// Opens a web address with the user's default handler; false when that cannot be started. Any thread.
    std::function<bool(const std::string& address)> openAddress;
    /// Who listens on a port of this machine. Any thread.
    std::function<PortOwner(std::uint16_t port)> portOwner;
    /// Writes one line to the system log. Any thread.
    std::function<void(const std::string& line)> log;
};

/// The system that this program runs on. `homeFolder` replaces the user's home folder for everything, and then nothing
/// outside of it is changed: neither the settings nor the Trash nor launchd's jobs of the user, nor the program itself,
/// unless it lies below `homeFolder`. Children are told so in their environment. Only a Trash that is no folder of its
/// own is the user's all the same.
System makeSystem(const std::optional<std::filesystem::path>& homeFolder = std::nullopt);

}  // namespace quenchly
