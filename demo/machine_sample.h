#pragma once

#include <optional>

#include "state_files.h"
#include "swap_usage.h"

namespace quenchly::demo {

/// One reading of the machine.
struct MachineSample {
    double load1;
    int cpuCount;
    std::optional<SwapUsage> swap;
};

/// Reads this machine; none when the system does not tell the load average.
std::optional<MachineSample> sampleMachine();

/// The load as a percentage of the processors, from 0 to 100.
int loadPercent(const MachineSample& sample);

bool isSwapCritical(const MachineSample& sample);

/// The sample as the state file holds it.
Json metrics(const MachineSample& sample);

}  // namespace quenchly::demo
