#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "instant.h"
#include "live_metrics.h"
#include "login_item.h"
#include "process_table.h"
#include "user_defaults.h"

namespace quenchly {

/// Everything that the services take from the world around them. The application builds the real one with
/// `makeSystem`; a test replaces the parts that it scripts.
struct System {
    /// The home folder of the user database, not of the HOME variable.
    std::filesystem::path homeFolder;
    std::filesystem::path currentDirectory;
    /// The folder of the running program, where a tool shipped with it lies.
    std::filesystem::path executableFolder;
    std::filesystem::path launchAgentsFolder;
    std::map<std::string, std::string> environment;
    /// Where on 127.0.0.1 the tool serves its dashboard.
    std::uint16_t dashboardPort = 8280;

    std::function<Instant()> now;
    /// One live reading of load and swap; see LiveMetricsSampler::sample.
    std::function<std::optional<LastMetrics>(bool swapCritical)> sampleMetrics;
    std::shared_ptr<ProcessTable> processes;
    std::shared_ptr<LoginItem> loginItem;
    std::shared_ptr<UserDefaults> userDefaults;
    /// Opens a web address with the user's default handler; false when that cannot be started. Any thread.
    std::function<bool(const std::string& address)> openAddress;
    /// Writes one line to the system log.
    std::function<void(const std::string& line)> log;
};

/// The system that this program runs on. `homeFolder` replaces the user's home folder for everything.
System makeSystem(const std::optional<std::filesystem::path>& homeFolder = std::nullopt);

}  // namespace quenchly
