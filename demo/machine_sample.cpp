#include "machine_sample.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace quenchly::demo {
namespace {

double percent(const SwapUsage& swap)
{
    return swap.usedMB / swap.totalMB * 100;
}

}  // namespace

std::optional<MachineSample> sampleMachine()
{
    std::array<double, 3> averages{};
    if (::getloadavg(averages.data(), static_cast<int>(averages.size())) < 1)
        return std::nullopt;
    const long processors = ::sysconf(_SC_NPROCESSORS_ONLN);
    return MachineSample{
        .load1 = averages[0], .cpuCount = static_cast<int>(std::max(processors, 1L)), .swap = readSwapUsage()};
}

int loadPercent(const MachineSample& sample)
{
    return static_cast<int>(std::clamp(std::round(sample.load1 / sample.cpuCount * 100), 0.0, 100.0));
}

bool isSwapCritical(const MachineSample& sample)
{
    return sample.swap && percent(*sample.swap) > 90;
}

Json metrics(const MachineSample& sample)
{
    Json result{{"load1", sample.load1},
                {"cpuCount", sample.cpuCount},
                {"cpuLoadPct", loadPercent(sample)},
                {"swapCritical", isSwapCritical(sample)}};
    if (sample.swap) {
        result["swapPct"] = percent(*sample.swap);
        result["swapUsedMB"] = sample.swap->usedMB;
    }
    return result;
}

}  // namespace quenchly::demo
