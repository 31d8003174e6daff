#include <sys/sysinfo.h>

#include "swap_usage.h"

namespace quenchly::LiveMetricsSampler {

Swap readSwap()
{
    struct sysinfo facts {};
    if (sysinfo(&facts) != 0)
        return {};
    const double unitsPerMB = 1024.0 * 1024.0 / static_cast<double>(facts.mem_unit);
    return swapFromAmounts(static_cast<double>(facts.totalswap) / unitsPerMB,
                           static_cast<double>(facts.totalswap - facts.freeswap) / unitsPerMB);
}

}  // namespace quenchly::LiveMetricsSampler
