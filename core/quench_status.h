#pragma once

#include <optional>
#include <vector>

#include "heat_state.h"

namespace quenchly {

enum class QuenchIcon { cool, protect, watch, stale };

template <>
inline constexpr auto rawValues<QuenchIcon> = textsOfCases<QuenchIcon>({
    {QuenchIcon::cool, "cool"},
    {QuenchIcon::protect, "protect"},
    {QuenchIcon::watch, "watch"},
    {QuenchIcon::stale, "stale"},
});

enum class QuenchBarTint {
    cool,
    protect,
    hotWatch,
    falseHeat,
    watch,
    unprotected,
    stale,
    waiting,
    spectrumLoop,
    spectrumTrend,
    spectrumFlat,
    spectrumInsufficient,
};

template <>
inline constexpr auto rawValues<QuenchBarTint> = textsOfCases<QuenchBarTint>({
    {QuenchBarTint::cool, "cool"},
    {QuenchBarTint::protect, "protect"},
    {QuenchBarTint::hotWatch, "hotWatch"},
    {QuenchBarTint::falseHeat, "falseHeat"},
    {QuenchBarTint::watch, "watch"},
    {QuenchBarTint::unprotected, "unprotected"},
    {QuenchBarTint::stale, "stale"},
    {QuenchBarTint::waiting, "waiting"},
    {QuenchBarTint::spectrumLoop, "spectrumLoop"},
    {QuenchBarTint::spectrumTrend, "spectrumTrend"},
    {QuenchBarTint::spectrumFlat, "spectrumFlat"},
    {QuenchBarTint::spectrumInsufficient, "spectrumInsufficient"},
});

/// Everything that the menu bar item and the panel draw.
struct QuenchStatus {
    QuenchIcon icon = QuenchIcon::stale;
    QuenchBarTint barTint = QuenchBarTint::waiting;
    Text headline;
    Text detail;
    std::optional<Text> lastCheckISO;
    Text lastCheckAge;  ///< "42s ago"; empty without a state or a readable time
    std::vector<PausedEntry> pausedTargets;
    std::vector<QuarantinedEntry> quarantine;  ///< only the entries to show
    std::optional<QuenchTone> tone;            ///< none while not set up, waiting or stale
    bool observeOnly = false;
    bool managementDisabled = false;  ///< Protection is off
    std::optional<Text> metricsLine;
    std::optional<LastMetrics> lastMetrics;
    bool swapCritical = false;
    bool stillOverloaded = false;
    bool slowActive = false;
    bool agentInstalled = false;
    std::optional<Text> memoryReliefTip;

    /// This status with a live sample in place of the file's metrics, also within the detail.
    QuenchStatus withLiveMetrics(const LastMetrics& metrics) const;

    bool operator==(const QuenchStatus&) const = default;
};

}  // namespace quenchly
