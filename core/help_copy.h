#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quenchly {

/// The rule for critical swap and the memory tip.
namespace MemoryReliefCopy {

/// Swap use above this percentage is critical, strictly.
inline constexpr double swapCriticalPct = 90.0;

bool isSwapCritical(std::optional<double> pct);
std::string tip();
std::string checksNotSetUpDetail();

struct LiveTip {
    bool swapCritical = false;
    bool listedAiRunning = false;
};
/// The tip while both hold.
std::optional<std::string> liveTip(const LiveTip& arguments);

}  // namespace MemoryReliefCopy

/// The help paragraph of each menu item, in the language in force.
namespace MenuHelpCopy {

/// The paragraph of a key that begins with "help_", as it is shown: where this is no Mac it speaks of a computer.
std::string paragraph(std::string_view key);

std::string protectionOn();
std::string protectionOff();
std::string checksNotSetUp();
std::string startBackgroundChecks();
std::string retainingMemory();
std::string unloadListedAI();
std::string extraMemoryStatus();
std::string extraMemoryTip();
std::string loadMeter();
std::string swapMeter();
std::string protectionAppliesTo();
std::string setAside();
std::string acknowledge();
std::string clearAllAside();
std::string liveData();
std::string checkForUpdates();
std::string autoUpdates();
std::string openAtLogin();
std::string reportProblem();
std::string uninstall();
std::string quit();

}  // namespace MenuHelpCopy
}  // namespace quenchly
