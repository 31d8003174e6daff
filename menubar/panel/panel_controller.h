#pragma once

#include <QObject>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "background_scan.h"
#include "menu_content.h"

namespace quenchly {

class StateWatcher;
class Updater;

/// What a scan of the targets is about, from the watcher's state of now.
TargetScanner::Situation targetSituation(const StateWatcher& watcher);

/// Decides what the panel shows and carries out what is pressed in it; needs no window. While the panel is not shown it
/// scans nothing and tells nothing. Main thread.
class PanelController : public QObject {
    Q_OBJECT

public:
    /// `watcher` and `updater` must outlive the controller.
    PanelController(StateWatcher& watcher, Updater& updater, QObject* parent = nullptr);

    /// From the state of now and what the last scan of the targets found; before the first, nothing is known of them
    /// but their names.
    MenuContent content() const;

    /// An opening that waited longer would be felt.
    static constexpr std::chrono::milliseconds longestWaitForTargets{50};

    /// Reads again what can change elsewhere and is not read each second: for a panel that is about to open. Waits for
    /// a scan of the targets; should it take longer than `longest`, the rows of the last one stand meanwhile.
    void prepareToOpen(std::chrono::milliseconds longest = longestWaitForTargets);

    /// Whether somebody can see the content. When that begins, unless it was prepared for, and on each change of the
    /// status after that, the targets are scanned in the background.
    void setShown(bool shown);

    /// Scans the targets on the calling thread, whether shown or not: for a picture.
    void scanNow();

    /// Each returns at once, apart from those that show an alert: they return when it is answered.
    void perform(MenuAction action);
    void acknowledge(const Text& id);
    void acknowledgeAll();

Q_SIGNALS:
    /// The content may have changed. Only while it is shown.
    void changed();
    /// An action is about to show something that the panel would cover, or to end the program.
    void leaving();

private:
    void follow();
    void scan();
    void takeOver(const std::vector<TargetRow>& rows);
    void performElsewhere(MenuAction action);

    StateWatcher& watcher_;
    Updater& updater_;
    std::string version_;  ///< empty when there is none
    bool shown_ = false;
    bool prepared_ = false;
    std::vector<TargetRow> targetRows_;
    std::optional<QuenchStatus> scannedStatus_;
    BackgroundScan backgroundScan_;
};

}  // namespace quenchly
