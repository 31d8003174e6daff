#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "heat_state.h"

/// What one live reading of the machine's load and swap amounts to.
namespace quenchly::LiveMetricsSampler {

struct Swap {
    std::optional<double> usedMB;
    std::optional<double> pct;  ///< of the swap total, unrounded

    bool operator==(const Swap&) const = default;
};

/// What the system says. `load1` is none when it cannot be read.
struct Readings {
    std::optional<double> load1;
    std::int64_t cpuCount = 1;  ///< below 1 counts as 1
    Swap swap;
};

/// The sample that the given readings make; none without a load. `swapCritical` can be raised by the readings and is
/// never lowered.
std::optional<LastMetrics> sampleFrom(const Readings& readings, bool swapCritical);

/// The figures in the text that macOS prints for "vm.swapusage"; none when it does not fit or the total is zero.
Swap swapFromUsageText(std::string_view text);

/// The figures for amounts in megabytes; none when the total is not above zero.
Swap swapFromAmounts(double totalMB, double usedMB);

}  // namespace quenchly::LiveMetricsSampler
