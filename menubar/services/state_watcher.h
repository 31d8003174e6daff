#pragma once

#include <QImage>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "heat_state_file.h"
#include "quench_status.h"
#include "system.h"
#include "tool_command.h"
#include "tool_presence.h"
#include "watched_file.h"

namespace quenchly {

/// Owns everything that the menu shows and reads it anew once a second. One instance for the life of the application,
/// on the main thread.
class StateWatcher : public QObject {
    Q_OBJECT

public:
    /// Reads everything once, and then every second while an event loop runs.
    explicit StateWatcher(System system, QObject* parent = nullptr);

    const System& system() const { return system_; }

    const QuenchStatus& status() const { return status_; }
    /// The menu bar glyph at every scale; made anew only when the tint changes.
    const std::vector<QImage>& iconImage() const { return iconImage_; }
    const std::filesystem::path& dataHome() const { return dataHome_; }
    /// Whether there is a tool; `toolAvailability` tells whether it can be run too.
    bool cliAvailable() const { return tool_.isFound(); }
    ToolAvailability toolAvailability() const { return tool_.availability(); }
    bool protectBusy() const { return protectBusy_; }
    bool ackBusy() const { return ackBusy_; }
    bool checkInFlight() const { return checkInFlight_; }
    /// The Protection mode is "pause".
    bool workSavedOn() const { return workSavedOn_; }
    bool throttleActive() const { return throttleActive_; }
    /// Filled even while nothing is throttled.
    const std::set<Text>& throttledLabels() const { return throttledLabels_; }
    bool openAtLogin() const { return openAtLogin_; }
    const std::filesystem::path& stateFileURL() const { return stateFile_.path(); }
    /// Not used by the application itself.
    const std::string& chipLabel() const { return chipLabel_; }

    /// The tint that the menu bar image is made from.
    static QuenchBarTint effectiveBarTint(QuenchBarTint tint) { return tint; }

    /// One whole refresh; never fails and never overlaps another.
    void reload();

    /// Opens the check-now span: until the checker records a new check, or for 95 seconds, a check counts as running.
    /// Not used by the application itself.
    void beginCheckNow();

    // What the menu asks the tool for. Each returns at once and says nothing; a missing or failing tool is silent. What
    // the tool changed is read first, and then the busy flag is cleared. A tool outlives the watcher if need be.

    /// These three share `protectBusy`: nothing happens while one of them runs.
    void setProtect(bool on);
    void installAgent();
    void unloadListed();
    /// These two share `ackBusy`.
    void acknowledgeQuarantine(const Text& id);
    /// Acknowledges the entries of the status one after another; nothing happens when there is none.
    void acknowledgeAllVisibleQuarantine();

    /// Opens the dashboard in the background; nothing happens while an earlier call is still at it.
    void startLiveData();
    /// The same on the calling thread, never the interface thread: blocks for up to ten seconds. False when no
    /// dashboard answered or there is no tool; without a tool its address is opened all the same. Another user's page
    /// is never opened, which is logged. Not used by the application itself.
    bool runLiveData() const;

    /// Registers or removes the login item; a failure is logged, and the system's own answer is published.
    void setOpenAtLogin(bool enabled);
    /// Reads again whether the login item is enabled, which the user can change elsewhere; published only on a change.
    void refreshOpenAtLogin();

    // These show alerts and return when the user has answered the last one.

    /// Copies a draft for the support and offers the ways to send it.
    void openReportProblem();
    /// Removes the product, asking before each step, and ends the program unless the first answer is no. There is no
    /// refresh meanwhile. Blocks while the tool works.
    void uninstallQuenchly();

    /// A notice with the one button "OK".
    struct Notice {
        std::string title;
        std::string text;
    };
    void showAlert(const Notice& notice) const;

    /// A system control that is a text, such as "hw.model"; none when it cannot be read.
    std::optional<std::string> sysctlString(const std::string& name) const;

Q_SIGNALS:
    /// Something published may have changed.
    void published();

private:
    struct CheckNowSpan {
        std::optional<Text> anchorISO;  ///< the last check's time when the span began
        Instant startedAt;
    };

    std::filesystem::path stateFolder() const { return dataHome_ / CheckerContract::stateFolder; }
    void start();
    void refreshStatus();
    QuenchStatus buildStatus(const std::optional<HeatState>& state) const;
    void updateIcon();
    void refreshCliAvailability();
    void refreshWorkSavedOn();
    void refreshThrottle();
    void refreshCheckInFlight();
    bool checkProcessRunning(const std::string& pgrep) const;
    /// Runs the tool once for each of `runs`, one after another.
    void startTool(bool StateWatcher::*busy, std::vector<ToolRun> runs);
    void finishTool(QObject* ended, bool StateWatcher::*busy);
    std::function<bool()> liveDataTask() const;
    void removeBackgroundCheck() const;
    void removeSavedData() const;
    void sayGoodbye() const;

    System system_;
    HeatStateFile stateFile_;
    std::filesystem::path dataHome_;
    WatchedFile modeFile_;
    WatchedFile throttleFile_;
    ToolPresence tool_;
    std::string chipLabel_;
    QuenchStatus status_;
    std::vector<QImage> iconImage_;
    std::optional<QuenchBarTint> lastIconTint_;
    bool protectBusy_ = false;
    bool ackBusy_ = false;
    bool checkInFlight_ = false;
    std::optional<CheckNowSpan> checkNow_;
    bool workSavedOn_ = false;
    bool throttleActive_ = false;
    std::set<Text> throttledLabels_;
    bool openAtLogin_ = false;
    std::unique_ptr<QThread> liveData_;  ///< destroying it interrupts it and waits for it
    QTimer timer_;
};

}  // namespace quenchly
