#include "state_watcher.h"

#include <chrono>
#include <utility>

#include "chip_facts.h"
#include "json_object.h"
#include "login_at_launch.h"
#include "menu_bar_icon.h"
#include "state_folder.h"
#include "status_builder.h"

namespace quenchly {
namespace {

constexpr std::chrono::milliseconds refreshInterval{1000};
constexpr double checkNowLimitSeconds = 95.0;

StateFileResolver::Resolution resolveStateFolder(const System& system)
{
    return StateFileResolver::resolve({.env = system.environment,
                                       .homeFolder = system.homeFolder,
                                       .keepsToHomeFolder = system.keepsToHomeFolder,
                                       .currentDirectory = system.currentDirectory});
}

}  // namespace

StateWatcher::StateWatcher(System system, QObject* parent)
    : QObject(parent),
      system_(std::move(system)),
      stateFile_(resolveStateFolder(system_).state, system_.now),
      dataHome_(stateFile_.path().parent_path().parent_path()),
      modeFile_(stateFolder() / CheckerContract::protectModeFile, system_.now),
      throttleFile_(stateFolder() / CheckerContract::throttleFile, system_.now)
{
    chipLabel_ = ChipLabel::machine();
    status_ = buildStatus(HeatState());
    updateIcon();
    refreshCliAvailability();
    LoginAtLaunch::applyDefaultIfNeeded(system_);
    openAtLogin_ = LoginAtLaunch::isEnabled(system_);
    start();
}

void StateWatcher::start()
{
    reload();
    timer_.setTimerType(Qt::CoarseTimer);
    connect(&timer_, &QTimer::timeout, this, &StateWatcher::reload);
    timer_.start(refreshInterval);
}

void StateWatcher::reload()
{
    refreshStatus();
    refreshCliAvailability();
    refreshWorkSavedOn();
    refreshThrottle();
    updateIcon();
    refreshCheckInFlight();
    Q_EMIT published();
}

void StateWatcher::refreshStatus()
{
    switch (stateFile_.refresh()) {
        case HeatStateFile::Outcome::missing:
            status_ = buildStatus(HeatState());
            break;
        case HeatStateFile::Outcome::unreadable:
            break;
        case HeatStateFile::Outcome::read:
            status_ = buildStatus(stateFile_.state());
            if (const auto sample = system_.sampleMetrics(status_.swapCritical))
                status_ = status_.withLiveMetrics(*sample);
            break;
    }
}

QuenchStatus StateWatcher::buildStatus(const std::optional<HeatState>& state) const
{
    return QuenchStatusBuilder::build(state, {.dataHome = dataHome_, .launchAgentsDir = system_.launchAgentsFolder},
                                      system_.now());
}

void StateWatcher::updateIcon()
{
    const QuenchBarTint tint = effectiveBarTint(status_.barTint);
    if (lastIconTint_ == tint)
        return;
    lastIconTint_ = tint;
    iconImage_ = MenuBarIcon::image(tint);
}

void StateWatcher::refreshCliAvailability()
{
    tool_.refresh(system_);
}

void StateWatcher::refreshWorkSavedOn()
{
    const auto reading = modeFile_.readIfChanged();
    if (!reading)
        return;
    const auto mode = parseJsonObject(reading->bytes);
    workSavedOn_ = mode && JsonObject(*mode).string("mode") == "pause";
}

void StateWatcher::refreshThrottle()
{
    const auto reading = throttleFile_.readIfChanged();
    if (!reading)
        return;
    throttleActive_ = false;
    throttledLabels_.clear();
    const auto json = parseJsonObject(reading->bytes);
    if (!json)
        return;
    const JsonObject throttle(*json);
    throttleActive_ = throttle.number("level").value_or(0) > 0 && !throttle.boolean("dryRun");
    for (const JsonObject& target : throttle.objects("targets"))
        if (auto label = target.string("label"))
            throttledLabels_.insert(std::move(*label));
}

void StateWatcher::refreshCheckInFlight()
{
    system_.processes->beginRefresh();
    if (checkProcessRunning("quenchly.ts check") || checkProcessRunning("MacOS/quenchly check")) {
        checkInFlight_ = true;
        return;
    }
    const bool nothingNewYet = checkNow_ && checkNow_->anchorISO == status_.lastCheckISO &&
                               secondsBetween(checkNow_->startedAt, system_.now()) <= checkNowLimitSeconds;
    if (!nothingNewYet)
        checkNow_.reset();
    checkInFlight_ = nothingNewYet;
}

bool StateWatcher::checkProcessRunning(const std::string& pgrep) const
{
    return !system_.processes->matching(pgrep).empty();
}

void StateWatcher::beginCheckNow()
{
    checkNow_ = {.anchorISO = status_.lastCheckISO, .startedAt = system_.now()};
}

}  // namespace quenchly
