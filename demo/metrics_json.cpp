#include "metrics_json.h"

#include <nlohmann/json.hpp>

namespace quenchly::demo {

Json metricsJson(const LastMetrics& metrics)
{
    Json result{{"load1", metrics.load1},
                {"cpuCount", metrics.cpuCount},
                {"cpuLoadPct", metrics.cpuLoadPct},
                {"swapCritical", metrics.swapCritical}};
    if (metrics.swapPct)
        result["swapPct"] = *metrics.swapPct;
    if (metrics.swapUsedMB)
        result["swapUsedMB"] = *metrics.swapUsedMB;
    return result;
}

}  // namespace quenchly::demo
