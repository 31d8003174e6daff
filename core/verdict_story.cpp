#include "verdict_story.h"

namespace quenchly::VerdictStoryLogic {
namespace {

VerdictStory line(std::string_view text, QuenchTone tone)
{
    return {.text = text, .tone = tone};
}

VerdictStory hotStory(const Situation& s)
{
    const bool noneHeld = s.pausedCount < 1;
    if (s.observeOnly)
        return line("Watching. AI keeps running.", QuenchTone::watch);
    if (s.slowActive && s.swapCritical)
        return line(easedBackStatusSwap, QuenchTone::protect);
    if (s.slowActive)
        return line(easedBackStatus, QuenchTone::protect);
    if (noneHeld && !s.targetsRunning)
        return line(overloadWatching, QuenchTone::watch);
    if (noneHeld && *s.targetsRunning > 0)
        return line(overloadAiRunning, QuenchTone::watch);
    if (noneHeld && *s.targetsRunning == 0)
        return line(overloadNoAi, QuenchTone::watch);
    if (noneHeld)
        return line(overloadWatching, QuenchTone::watch);
    return line(heldTargetDetail({.swapCritical = s.swapCritical, .stillOverloaded = true}), QuenchTone::protect);
}

VerdictStory calmStory(const Situation& s)
{
    const bool noneHeld = s.pausedCount < 1;
    const bool falseHeat = isFalseHeat(s.verdict);
    if (falseHeat && s.pausedCount == 0 && !s.slowActive)
        return line(extraMemoryOnDisk, QuenchTone::watch);
    if (noneHeld && s.slowActive && (s.swapCritical || falseHeat))
        return line(easedBackStatusSwap, QuenchTone::protect);
    if (noneHeld && s.slowActive)
        return line(easedBackStatus, QuenchTone::protect);
    if (noneHeld && s.lastRestoreAt)
        return line("Calm streak. AI continued where it left off.", QuenchTone::cool);
    if (noneHeld)
        return line(machineIsCalm, QuenchTone::cool);
    if (s.swapCritical)
        return line(extraMemoryOnDisk, QuenchTone::protect);
    return line("Holding until pressure drops. Memory stays; full speed returns when safe.", QuenchTone::protect);
}

}  // namespace

bool isFalseHeat(const Text& verdict)
{
    return verdict == "false-heat";
}

VerdictStory story(const Situation& situation)
{
    return situation.hot ? hotStory(situation) : calmStory(situation);
}

std::optional<std::string_view> protectionAppliesHonesty(const ProtectionApplies& arguments)
{
    if (arguments.anyListedLive || !arguments.protectOn)
        return std::nullopt;
    return arguments.overload ? overloadNoListedAi : noListedAiOpen;
}

std::string_view heldTargetDetail(const HeldTarget& arguments)
{
    if (arguments.swapCritical)
        return extraMemoryOnDisk;
    return arguments.stillOverloaded ? holdingUntilPressureDrops : "Safety checking";
}

std::string_view targetProtectDetail(bool)
{
    return easedBackTargetLine;
}

}  // namespace quenchly::VerdictStoryLogic
