#include "live_metrics.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <regex>

#ifdef __APPLE__
#include <sys/sysctl.h>

#include "chip_label.h"
#else
#include <sys/sysinfo.h>
#endif

#include "decimal_number.h"
#include "help_copy.h"
#include "metrics_line.h"
#include "quench_status.h"

namespace quenchly {
namespace LiveMetricsSampler {
namespace {

std::optional<double> loadAverage1()
{
    std::array<double, 3> averages{};
    if (getloadavg(averages.data(), static_cast<int>(averages.size())) < 1)
        return std::nullopt;
    return averages[0];
}

#ifdef __APPLE__
Swap readSwap()
{
    return swapFromUsageText(ChipLabel::shell("sysctl -n vm.swapusage 2>/dev/null"));
}
#else
Swap readSwap()
{
    struct sysinfo facts {};
    if (sysinfo(&facts) != 0)
        return {};
    const double unitsPerMB = 1024.0 * 1024.0 / static_cast<double>(facts.mem_unit);
    return swapFromAmounts(static_cast<double>(facts.totalswap) / unitsPerMB,
                           static_cast<double>(facts.totalswap - facts.freeswap) / unitsPerMB);
}
#endif

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

std::optional<LastMetrics> sampleFrom(const Readings& readings, bool swapCritical)
{
    if (!readings.load1)
        return std::nullopt;
    LastMetrics metrics;
    metrics.load1 = *readings.load1;
    metrics.swapPct = readings.swap.pct;
    metrics.swapUsedMB = readings.swap.usedMB;
    metrics.cpuCount = std::max<std::int64_t>(readings.cpuCount, 1);
    metrics.cpuLoadPct = cpuLoadPercent(metrics.load1, metrics.cpuCount);
    metrics.swapCritical = swapCritical || MemoryReliefCopy::isSwapCritical(metrics.swapPct);
    metrics.menubarLine =
        metricsLine({.cpuLoadPct = metrics.cpuLoadPct, .swapPct = metrics.swapPct, .swapUsedMB = metrics.swapUsedMB});
    return metrics;
}

Swap swapFromUsageText(std::string_view text)
{
    // Repetitions are bounded because libstdc++ recurses once for each, down to a stack overflow.
    static const std::regex figures(R"(total = ([0-9.]{1,30})M {1,10}used = ([0-9.]{1,30})M)");
    std::match_results<std::string_view::const_iterator> found;
    if (!std::regex_search(text.begin(), text.end(), found, figures))
        return {};
    const auto total = decimalNumber(found[1].str());
    const auto used = decimalNumber(found[2].str());
    return total && used ? swapFromAmounts(*total, *used) : Swap();
}

Swap swapFromAmounts(double totalMB, double usedMB)
{
    if (!(totalMB > 0))
        return {};
    return {.usedMB = usedMB, .pct = usedMB / totalMB * 100};
}

}  // namespace LiveMetricsSampler

QuenchStatus QuenchStatus::withLiveMetrics(const LastMetrics& metrics) const
{
    QuenchStatus live = *this;
    const std::string oldLine = metricsLine ? metricsLine->utf8() : std::string();
    live.detail = replacingAll(detail.utf8(), oldLine, metrics.menubarLine.utf8());
    live.metricsLine = metrics.menubarLine;
    live.lastMetrics = metrics;
    live.swapCritical = metrics.swapCritical;
    return live;
}

}  // namespace quenchly
