#pragma once

#include <cstdint>
#include <string>

#include "heat_state.h"

namespace quenchly {

/// One meter: a name and a value over a bar. The bar's length and the printed value may come from different figures.
struct MeterContent {
    std::string label;
    std::string help;
    std::string subtitle;  ///< empty when there is none
    std::string value;
    double fill = 0;           ///< percent of the bar, 0 to 100
    std::uint32_t accent = 0;  ///< 0xRRGGBB

    bool operator==(const MeterContent&) const = default;
};

/// The meters of load and of swap for one record of figures.
struct MetricsMeters {
    MeterContent load;
    MeterContent swap;

    bool operator==(const MetricsMeters&) const = default;

    static MetricsMeters of(const LastMetrics& metrics);

    /// The help text for a meter's displayed label; empty when there is none.
    static std::string meterHelp(const std::string& label);
};

}  // namespace quenchly
