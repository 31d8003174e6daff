#include "metrics_line.h"

#include <algorithm>
#include <cstdlib>

#include "rounding.h"

namespace quenchly {
namespace {

std::string oneDecimal(double value)
{
    const std::int64_t tenths = roundedInteger(value * 10);
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace

std::int64_t cpuLoadPercent(double load1, std::int64_t cpuCount)
{
    const double processors = static_cast<double>(std::max<std::int64_t>(cpuCount, 1));
    return std::min<std::int64_t>(roundedInteger(load1 / processors * 100), 100);
}

std::optional<std::string> swapAmount(const std::optional<double>& usedMB)
{
    if (!usedMB || !(*usedMB >= 0))
        return std::nullopt;
    const double gigabytes = *usedMB / 1024;
    if (gigabytes >= 10)
        return std::to_string(roundedInteger(gigabytes)) + " GB";
    if (gigabytes >= 1)
        return oneDecimal(gigabytes) + " GB";
    return std::to_string(roundedInteger(*usedMB)) + " MB";
}

std::string swapPercent(const std::optional<double>& pct)
{
    return pct ? std::to_string(roundedInteger(*pct)) + "%" : "n/a";
}

std::string metricsLine(const MetricsLineFigures& figures)
{
    return "load " + std::to_string(figures.cpuLoadPct) + "% · swap " + swapFigures(figures);
}

std::string swapFigures(const MetricsLineFigures& figures)
{
    const auto amount = swapAmount(figures.swapUsedMB);
    if (!figures.swapPct)
        return amount.value_or("n/a");
    const std::string percent = swapPercent(figures.swapPct);
    return amount ? *amount + " (" + percent + ")" : percent;
}

}  // namespace quenchly
