#include "status_builder.h"

#include "help_copy.h"
#include "l10n.h"
#include "protect_lockup.h"
#include "quarantine_display.h"
#include "recency_copy.h"
#include "relative_time.h"
#include "verdict_story.h"

namespace quenchly::QuenchStatusBuilder {
namespace {

/// What every situation copies from the state.
QuenchStatus statusFromState(const HeatState& state, Instant now)
{
    QuenchStatus status;
    status.lastCheckISO = state.lastCheck;
    status.lastCheckAge = RelativeTime::ageAgo(state.lastCheck, now);
    status.pausedTargets = state.paused;
    status.quarantine = QuarantineDisplay::visible(state.quarantined, now);
    if (state.lastMetrics) {
        status.metricsLine = state.lastMetrics->menubarLine;
        status.swapCritical = state.lastMetrics->swapCritical;
    }
    status.lastMetrics = state.lastMetrics;
    status.stillOverloaded = state.hot;
    status.slowActive = state.slowActive;
    status.memoryReliefTip = state.memoryReliefTip;
    return status;
}

void showNotSetUp(QuenchStatus& status)
{
    status.icon = QuenchIcon::stale;
    status.barTint = QuenchBarTint::waiting;
    status.headline = L10n::t(ProtectLockup::checksNotSetUp);
    status.detail = MemoryReliefCopy::checksNotSetUpDetail();
    status.observeOnly = true;  // although no checker runs at all
}

void showUnprotected(QuenchStatus& status, QuenchIcon icon)
{
    status.icon = icon;
    status.barTint = QuenchBarTint::unprotected;
    status.headline = unprotectedHeadline;
    status.detail = unprotectedDetail;
    status.slowActive = false;
}

void showWaiting(QuenchStatus& status, QuenchBarTint tint)
{
    status.icon = QuenchIcon::stale;
    status.barTint = tint;
    status.headline = RecencyCopy::checkingInAMoment();
    status.detail = RecencyCopy::cadenceQuiet() + ".";
    status.slowActive = false;
}

VerdictStory computedStory(const HeatState& state, const QuenchStatus& status)
{
    return VerdictStoryLogic::story({
        .verdict = state.thermalTruth,
        .hot = state.hot,
        .pausedCount = static_cast<std::int64_t>(state.paused.size()),
        .observeOnly = status.observeOnly,
        .lastRestoreAt = state.lastRestoreAt,
        .targetsRunning = std::nullopt,
        .swapCritical = status.swapCritical,
        .slowActive = state.slowActive,
    });
}

/// The checker's own story wins only while nothing at all is going on.
VerdictStory shownStory(const HeatState& state, const QuenchStatus& status)
{
    const bool calm = state.paused.empty() && !state.slowActive && !status.swapCritical && !state.hot;
    return state.story && calm ? *state.story : computedStory(state, status);
}

QuenchIcon iconNamedLike(QuenchTone tone)
{
    switch (tone) {
        case QuenchTone::cool:
            return QuenchIcon::cool;
        case QuenchTone::protect:
            return QuenchIcon::protect;
        case QuenchTone::watch:
            return QuenchIcon::watch;
    }
    return QuenchIcon::watch;
}

std::string detailSentence(const HeatState& state, bool observeOnly, bool swapCritical)
{
    const bool held = !state.paused.empty();
    if (state.hot && observeOnly)
        return "Watching. AI keeps running in this mode.";
    if (state.slowActive && swapCritical)
        return std::string(VerdictStoryLogic::easedBackStatusSwap);
    if (state.slowActive)
        return std::string(VerdictStoryLogic::easedBackStatus);
    if (state.hot && !held)
        return "High load. Watching.";
    if (state.hot)
        return std::string(
            VerdictStoryLogic::heldTargetDetail({.swapCritical = swapCritical, .stillOverloaded = true}));
    if (!held && VerdictStoryLogic::isFalseHeat(state.thermalTruth))
        return std::string(VerdictStoryLogic::extraMemoryKeepsRunning);
    if (!held && state.lastRestoreAt)
        return "Your AI continued where it left off.";
    if (!held)
        return std::string(VerdictStoryLogic::machineIsCalm);
    const std::string detail(VerdictStoryLogic::heldTargetDetail({.swapCritical = swapCritical}));
    return swapCritical ? detail : detail + ". " + std::to_string(state.coolStreak) + " of 5 safe.";
}

std::string detailLine(const HeatState& state, bool observeOnly, bool swapCritical)
{
    const std::string sentence = detailSentence(state, observeOnly, swapCritical);
    return state.lastMetrics ? state.lastMetrics->menubarLine.utf8() + ". " + sentence : sentence;
}

void showStory(QuenchStatus& status, const HeatState& state)
{
    const VerdictStory story = shownStory(state, status);
    status.headline = story.text;
    status.tone = story.tone;
    status.icon = !state.paused.empty() || state.slowActive ? QuenchIcon::protect : iconNamedLike(story.tone);
    status.barTint = resolveBarTint(state, status.icon, status.observeOnly);
    status.detail = detailLine(state, status.observeOnly, status.swapCritical);
}

QuenchBarTint tintNamedLike(QuenchIcon icon)
{
    switch (icon) {
        case QuenchIcon::cool:
            return QuenchBarTint::cool;
        case QuenchIcon::protect:
            return QuenchBarTint::protect;
        case QuenchIcon::watch:
            return QuenchBarTint::watch;
        case QuenchIcon::stale:
            return QuenchBarTint::stale;
    }
    return QuenchBarTint::stale;
}

QuenchBarTint tintOf(SpectrumClass spectrum)
{
    switch (spectrum) {
        case SpectrumClass::loop:
            return QuenchBarTint::spectrumLoop;
        case SpectrumClass::trend:
            return QuenchBarTint::spectrumTrend;
        case SpectrumClass::flat:
            return QuenchBarTint::spectrumFlat;
        case SpectrumClass::insufficient:
            return QuenchBarTint::spectrumInsufficient;
    }
    return QuenchBarTint::spectrumInsufficient;
}

}  // namespace

QuenchStatus build(const std::optional<HeatState>& state, const ObserveOnly::Folders& folders, Instant now)
{
    const ObserveOnly::Installation installation = ObserveOnly::installation(folders);
    const bool off = installation.managementDisabled;

    QuenchStatus status = state ? statusFromState(*state, now) : QuenchStatus();
    status.observeOnly = installation.observeOnly;
    status.managementDisabled = off;
    status.agentInstalled = installation.agentInstalled;

    if (!installation.agentInstalled && !off) {
        showNotSetUp(status);
    } else if (!state && off) {
        showUnprotected(status, QuenchIcon::stale);
    } else if (!state) {
        showWaiting(status, QuenchBarTint::waiting);
    } else if (isStale(*state, now) && off) {
        showUnprotected(status, QuenchIcon::stale);
    } else if (isStale(*state, now)) {
        showWaiting(status, QuenchBarTint::stale);
    } else if (off) {
        showUnprotected(status, QuenchIcon::watch);
        status.tone = QuenchTone::watch;
    } else {
        showStory(status, *state);
    }
    return status;
}

bool isStale(const HeatState& state, Instant now)
{
    const auto checked = state.lastCheck ? RelativeTime::date(state.lastCheck->utf8()) : std::nullopt;
    return !checked || secondsBetween(*checked, now) > staleAfterSeconds;
}

QuenchBarTint resolveBarTint(const HeatState& state, QuenchIcon icon, bool observeOnly)
{
    if (!state.paused.empty() || state.slowActive)
        return QuenchBarTint::protect;
    if (state.hot)
        return observeOnly ? QuenchBarTint::watch : QuenchBarTint::hotWatch;
    if (VerdictStoryLogic::isFalseHeat(state.thermalTruth))
        return QuenchBarTint::falseHeat;
    if (state.spectrumClass)
        return tintOf(*state.spectrumClass);
    return tintNamedLike(icon);
}

}  // namespace quenchly::QuenchStatusBuilder
