#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quenchly {

/// The load average as percent of `cpuCount` processors (at least one is assumed), rounded with halves away from zero,
/// at most 100, with no lower limit.
std::int64_t cpuLoadPercent(double load1, std::int64_t cpuCount);

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
