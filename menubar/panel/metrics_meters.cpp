#include "metrics_meters.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "help_copy.h"
#include "l10n.h"
#include "metrics_line.h"
#include "wind_palette.h"

namespace quenchly {
namespace {

/// A figure that is no number draws nothing.
double clampedFill(double percent)
{
    return percent > 0 ? std::min(percent, 100.0) : 0.0;
}

double loadFill(const LastMetrics& metrics)
{
    const auto processors = static_cast<double>(std::max<std::int64_t>(metrics.cpuCount, 1));
    return clampedFill(metrics.load1 / processors * 100);
}

std::uint32_t loadAccent(std::int64_t cpuLoadPct)
{
    if (cpuLoadPct >= 90)
        return WindPalette::red;
    if (cpuLoadPct >= 70)
        return WindPalette::amber;
    if (cpuLoadPct < 45)
        return WindPalette::blue;
    return WindPalette::teal;
}

std::uint32_t swapAccent(const LastMetrics& metrics)
{
    if (metrics.swapCritical)
        return WindPalette::clay;
    if (!metrics.swapPct)
        return WindPalette::teal;
    if (*metrics.swapPct >= 90)
        return WindPalette::red;
    if (*metrics.swapPct >= 70)
        return WindPalette::amber;
    if (*metrics.swapPct < 45)
        return WindPalette::blue;
    return WindPalette::teal;
}

MeterContent meter(std::string_view key)
{
    MeterContent content;
    content.label = L10n::t(key);
    content.help = MetricsMeters::meterHelp(content.label);
    return content;
}

}  // namespace

MetricsMeters MetricsMeters::of(const LastMetrics& metrics)
{
    MetricsMeters meters{.load = meter("load"), .swap = meter(metrics.swapCritical ? "extra_memory_on_disk" : "swap")};
    meters.load.value = std::to_string(metrics.cpuLoadPct) + "%";
    meters.load.fill = loadFill(metrics);
    meters.load.accent = loadAccent(metrics.cpuLoadPct);
    meters.swap.value = swapPercent(metrics.swapPct);
    meters.swap.subtitle = swapAmount(metrics.swapUsedMB).value_or("");
    meters.swap.fill = clampedFill(metrics.swapPct.value_or(0));
    meters.swap.accent = swapAccent(metrics);
    return meters;
}

std::string MetricsMeters::meterHelp(const std::string& label)
{
    const auto isOneOf = [&label](std::initializer_list<std::string> names) {
        return std::find(names.begin(), names.end(), label) != names.end();
    };
    if (isOneOf({"load", L10n::t("load")}))
        return MenuHelpCopy::loadMeter();
    if (isOneOf({"swap", "extra memory on disk", L10n::t("swap"), L10n::t("extra_memory_on_disk")}))
        return MenuHelpCopy::swapMeter();
    return {};
}

}  // namespace quenchly
