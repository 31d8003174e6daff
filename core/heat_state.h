#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "enumeration.h"
#include "text.h"

namespace quenchly {

class JsonObject;

/// The colour of a story line: all is well, listed AI is eased or held, or something is only watched.
enum class QuenchTone { cool, protect, watch };

template <>
inline constexpr auto rawValues<QuenchTone> = textsOfCases<QuenchTone>({
    {QuenchTone::cool, "cool"},
    {QuenchTone::protect, "protect"},
    {QuenchTone::watch, "watch"},
});

/// The checker's classification of the recent load series.
enum class SpectrumClass { loop, trend, flat, insufficient };

template <>
inline constexpr auto rawValues<SpectrumClass> = textsOfCases<SpectrumClass>({
    {SpectrumClass::loop, "loop"},
    {SpectrumClass::trend, "trend"},
    {SpectrumClass::flat, "flat"},
    {SpectrumClass::insufficient, "insufficient"},
});

/// One AI target that the checker holds in place.
struct PausedEntry {
    Text label;
    std::int64_t pid = 0;
    Text pausedAt;  ///< ISO-8601, empty when unknown
    Text reason;

    bool operator==(const PausedEntry&) const = default;
};

/// One process set aside after a looper check.
struct QuarantinedEntry {
    Text id;  ///< what the acknowledge command takes
    Text kind = "process";
    Text cmd;
    Text quarantinedAt;  ///< ISO-8601, empty when unknown
    Text reason;
    bool acknowledged = false;

    bool operator==(const QuarantinedEntry&) const = default;
};

/// One sample of load and swap.
struct LastMetrics {
    double load1 = 0;  ///< one-minute load average
    std::optional<double> swapPct;
    std::optional<double> swapUsedMB;
    std::int64_t cpuCount = 1;
    std::int64_t cpuLoadPct = 0;  ///< load as percent of the processors
    bool swapCritical = false;
    Text menubarLine;

    /// None without an object or without a readable load.
    static std::optional<LastMetrics> parse(const std::optional<JsonObject>& object);

    bool operator==(const LastMetrics&) const = default;
};

/// A story line in plain words.
struct VerdictStory {
    Text text;
    QuenchTone tone = QuenchTone::watch;

    bool operator==(const VerdictStory&) const = default;
};

/// The checker's state file. Every key is optional; a value of the wrong type counts as absent.
struct HeatState {
    std::optional<Text> lastCheck;  ///< ISO-8601, as are the other times
    Text thermalTruth = "cool";     ///< the verdict word: "cool", "false-heat" or any other
    bool hot = false;
    std::int64_t coolStreak = 0;
    std::int64_t hotStreak = 0;
    std::optional<Text> lastHotAt;
    std::optional<Text> lastCoolAt;
    std::optional<Text> lastRestoreAt;
    std::vector<PausedEntry> paused;
    std::vector<QuarantinedEntry> quarantined;
    std::optional<Text> updatedAt;
    std::optional<VerdictStory> story;
    std::optional<SpectrumClass> spectrumClass;
    std::optional<LastMetrics> lastMetrics;
    bool slowActive = false;
    std::optional<Text> memoryReliefTip;

    /// The state in the bytes or the text of the file. None only when they are not JSON or the top level is no object.
    static std::optional<HeatState> parse(std::string_view data);
    static HeatState parse(const JsonObject& object);

    bool operator==(const HeatState&) const = default;
};

}  // namespace quenchly
