#include "panel_controller.h"

#include <utility>

#include "state_watcher.h"
#include "updater.h"

namespace quenchly {
namespace {

std::vector<TargetRow> unscannedTargets()
{
    std::vector<TargetRow> rows;
    for (const std::string_view key : TargetScanner::knownTargets)
        rows.push_back({.name = TargetScanner::displayName(key)});
    return rows;
}

}  // namespace

TargetScanner::Situation targetSituation(const StateWatcher& watcher)
{
    const QuenchStatus& status = watcher.status();
    return {.paused = status.pausedTargets,
            .swapCritical = status.swapCritical,
            .stillOverloaded = status.stillOverloaded,
            .slowActive = status.slowActive,
            .workSavedOn = watcher.workSavedOn(),
            .throttledLabels = watcher.throttledLabels(),
            .throttleActive = watcher.throttleActive()};
}

PanelController::PanelController(StateWatcher& watcher, Updater& updater, QObject* parent)
    : QObject(parent),
      watcher_(watcher),
      updater_(updater),
      version_(bundleVersion(watcher.system().bundleInfo).value_or("")),
      targetRows_(unscannedTargets()),
      backgroundScan_(watcher.system().makeProcesses)
{
    connect(&watcher, &StateWatcher::published, this, &PanelController::follow);
    connect(&updater, &Updater::published, this, &PanelController::follow);
    connect(&backgroundScan_, &BackgroundScan::finished, this, &PanelController::takeOver);
}

MenuContent PanelController::content() const
{
    return menuContent({.status = watcher_.status(),
                        .targetRows = targetRows_,
                        .toolAvailability = watcher_.toolAvailability(),
                        .protectBusy = watcher_.protectBusy(),
                        .ackBusy = watcher_.ackBusy(),
                        .checkInFlight = watcher_.checkInFlight(),
                        .openAtLogin = watcher_.openAtLogin(),
                        .updaterConfigured = updater_.isConfigured(),
                        .automaticChecksEnabled = updater_.automaticChecksEnabled(),
                        .version = version_,
                        .now = watcher_.system().now()});
}

void PanelController::prepareToOpen(std::chrono::milliseconds longest)
{
    watcher_.refreshOpenAtLogin();
    if (shown_)
        return;
    scan();
    backgroundScan_.waitFor(longest);
    prepared_ = true;
}

void PanelController::setShown(bool shown)
{
    if (shown_ == shown)
        return;
    shown_ = shown;
    const bool prepared = std::exchange(prepared_, false);
    if (!shown)
        return;
    if (!prepared)
        scan();
    Q_EMIT changed();
}

void PanelController::follow()
{
    if (!shown_)
        return;
    if (scannedStatus_ != watcher_.status())
        scan();
    Q_EMIT changed();
}

void PanelController::scan()
{
    scannedStatus_ = watcher_.status();
    backgroundScan_.request(targetSituation(watcher_));
}

void PanelController::scanNow()
{
    takeOver(TargetScanner::rows(*watcher_.system().makeProcesses(), targetSituation(watcher_)));
}

void PanelController::takeOver(const std::vector<TargetRow>& rows)
{
    if (targetRows_ == rows)
        return;
    targetRows_ = rows;
    if (shown_)
        Q_EMIT changed();
}

void PanelController::acknowledge(const Text& id)
{
    watcher_.acknowledgeQuarantine(id);
}

void PanelController::acknowledgeAll()
{
    watcher_.acknowledgeAllVisibleQuarantine();
}

void PanelController::perform(MenuAction action)
{
    switch (action) {
        case MenuAction::installAgent:
            return watcher_.installAgent();
        case MenuAction::protectOn:
        case MenuAction::protectOff:
            return watcher_.setProtect(action == MenuAction::protectOn);
        case MenuAction::unloadListed:
            return watcher_.unloadListed();
        case MenuAction::openAtLoginOn:
        case MenuAction::openAtLoginOff:
            return watcher_.setOpenAtLogin(action == MenuAction::openAtLoginOn);
        case MenuAction::automaticChecksOn:
        case MenuAction::automaticChecksOff:
            return updater_.setAutomaticChecksEnabled(action == MenuAction::automaticChecksOn);
        case MenuAction::liveData:
            return watcher_.startLiveData();
        case MenuAction::checkForUpdates:
        case MenuAction::reportProblem:
        case MenuAction::uninstall:
        case MenuAction::quit:
            return performElsewhere(action);
    }
}

void PanelController::performElsewhere(MenuAction action)
{
    Q_EMIT leaving();
    switch (action) {
        case MenuAction::checkForUpdates:
            return updater_.checkForUpdates();
        case MenuAction::reportProblem:
            return watcher_.openReportProblem();
        case MenuAction::uninstall:
            return watcher_.uninstallQuenchly();
        default:
            return watcher_.system().application->terminate();
    }
}

}  // namespace quenchly
