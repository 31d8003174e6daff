#include "live_metrics.h"

#include <algorithm>
#include <regex>

#include "decimal_number.h"
#include "help_copy.h"
#include "metrics_line.h"
#include "quench_status.h"

namespace quenchly {
namespace LiveMetricsSampler {

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
