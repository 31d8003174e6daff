#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "heat_state.h"

/// The decision table that says in plain words what Protection is doing. The texts are English only.
namespace quenchly::VerdictStoryLogic {

inline constexpr std::string_view easedBackStatus = "AI is eased back. The machine is not fighting the AI for CPU.";
inline constexpr std::string_view easedBackStatusSwap =
    "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is progressing.";
inline constexpr std::string_view extraMemoryOnDisk = "Using extra memory on disk. Work is progressing.";
inline constexpr std::string_view extraMemoryKeepsRunning = "Using extra memory on disk. AI keeps running.";
inline constexpr std::string_view easedBackTargetLine = "Eased back";
inline constexpr std::string_view overloadWatching = "Overload. Watching.";
inline constexpr std::string_view overloadAiRunning = "Overload. AI still running.";
inline constexpr std::string_view overloadNoAi = "Overload. No listed AI to ease.";
inline constexpr std::string_view overloadNoListedAi = overloadNoAi;
inline constexpr std::string_view noListedAiOpen = "No listed AI is open. Other AI is not eased.";
inline constexpr std::string_view holdingUntilPressureDrops =
    "Holding until pressure drops. The machine is not fighting the AI for CPU.";
inline constexpr std::string_view machineIsCalm = "Machine is calm. AI keeps running as usual.";

/// Whether the checker judged the load to be memory pressure; the word must match exactly.
bool isFalseHeat(const Text& verdict);

struct Situation {
    Text verdict;
    bool hot = false;
    std::int64_t pausedCount = 0;
    bool observeOnly = false;
    std::optional<Text> lastRestoreAt;
    std::optional<std::int64_t> targetsRunning;  ///< none: not known
    bool swapCritical = false;
    bool slowActive = false;
};
VerdictStory story(const Situation& situation);

struct ProtectionApplies {
    bool protectOn = false;
    bool overload = false;
    bool anyListedLive = false;
};
/// Says that Protection is on but has nothing to act on; none otherwise.
std::optional<std::string_view> protectionAppliesHonesty(const ProtectionApplies& arguments);

struct HeldTarget {
    bool swapCritical = false;
    bool stillOverloaded = false;
};
std::string_view heldTargetDetail(const HeldTarget& arguments);

/// Not used by the application itself.
std::string_view targetProtectDetail(bool workSaved);

}  // namespace quenchly::VerdictStoryLogic
