#include "live_sample.h"

#include <unistd.h>

#include <array>
#include <cstdlib>

#include "swap_usage.h"

namespace quenchly::LiveMetricsSampler {
namespace {

std::optional<double> loadAverage1()
{
    std::array<double, 3> averages{};
    if (getloadavg(averages.data(), static_cast<int>(averages.size())) < 1)
        return std::nullopt;
    return averages[0];
}

/// Asking the system costs more than all the rest of a sample, and the answer hardly ever changes.
std::int64_t processorCount()
{
    constexpr unsigned samplesPerAnswer = 60;
    thread_local unsigned samples = 0;
    thread_local std::int64_t count = 1;
    if (samples++ % samplesPerAnswer == 0)
        count = sysconf(_SC_NPROCESSORS_ONLN);
    return count;
}

}  // namespace

std::optional<LastMetrics> sample(bool swapCritical)
{
    const auto load1 = loadAverage1();
    if (!load1)
        return std::nullopt;
    return sampleFrom({.load1 = load1, .cpuCount = processorCount(), .swap = readSwap()}, swapCritical);
}

}  // namespace quenchly::LiveMetricsSampler
