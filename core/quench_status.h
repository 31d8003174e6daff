#pragma once

#include <optional>
#include <vector>

#include "heat_state.h"

namespace quenchly {

enum class QuenchIcon { cool, protect, watch, stale };

template <>
inline constexpr std::array<std::string_view, 4> rawValues<QuenchIcon>{"cool", "protect", "watch", "stale"};

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
inline constexpr std::array<std::string_view, 12> rawValues<QuenchBarTint>{
    "cool",  "protect", "hotWatch",     "falseHeat",     "watch",        "unprotected",
    "stale", "waiting", "spectrumLoop", "spectrumTrend", "spectrumFlat", "spectrumInsufficient"};

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
