#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "heat_state.h"

/// One live reading of the machine's load and swap.
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

/// Reads the machine now; none when the load average cannot be read. `swapCritical` can be raised by the reading and is
/// never lowered. On macOS a child process is run and waited for.
std::optional<LastMetrics> sample(bool swapCritical);

/// The sample that the given readings make.
std::optional<LastMetrics> sampleFrom(const Readings& readings, bool swapCritical);

/// The figures in the text that macOS prints for "vm.swapusage"; none when it does not fit or the total is zero.
Swap swapFromUsageText(std::string_view text);

/// The figures for amounts in megabytes; none when the total is not above zero.
Swap swapFromAmounts(double totalMB, double usedMB);

}  // namespace quenchly::LiveMetricsSampler
