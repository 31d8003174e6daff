#include <sys/sysinfo.h>

#include "swap_usage.h"

namespace quenchly::demo {

std::optional<SwapUsage> readSwapUsage()
{
    struct sysinfo info {};
    if (::sysinfo(&info) != 0 || info.totalswap == 0)
        return std::nullopt;
    const double unitsPerMB = 1024.0 * 1024.0 / info.mem_unit;
    return SwapUsage{.usedMB = static_cast<double>(info.totalswap - info.freeswap) / unitsPerMB,
                     .totalMB = static_cast<double>(info.totalswap) / unitsPerMB};
}

}  // namespace quenchly::demo
