#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quenchly {

/// The load average as percent of `cpuCount` processors (at least one is assumed), rounded with halves away from zero,
/// at most 100, with no lower limit.
std::int64_t cpuLoadPercent(double load1, std::int64_t cpuCount);

/// The amount of swap in use: "12 GB", "3.4 GB" or "512 MB"; none for an absent, negative or unreadable amount.
std::optional<std::string> swapAmount(const std::optional<double>& usedMB);

/// "45%", or "n/a" when it is absent.
std::string swapPercent(const std::optional<double>& pct);

struct MetricsLineFigures {
    std::int64_t cpuLoadPct = 0;
    std::optional<double> swapPct;
    std::optional<double> swapUsedMB;
};
/// "load 73% · swap 3.2 GB (45%)". Not localised; an absent or negative amount of swap is left out.
std::string metricsLine(const MetricsLineFigures& figures);

/// The swap part of the line alone: "3.2 GB (45%)", "45%", "512 MB" or "n/a".
std::string swapFigures(const MetricsLineFigures& figures);

}  // namespace quenchly
