#include <sys/types.h>

#include <sys/sysctl.h>

#include "swap_usage.h"

namespace quenchly::demo {

std::optional<SwapUsage> readSwapUsage()
{
    xsw_usage usage{};
    std::size_t size = sizeof usage;
    if (::sysctlbyname("vm.swapusage", &usage, &size, nullptr, 0) != 0 || usage.xsu_total == 0)
        return std::nullopt;
    constexpr double bytesPerMB = 1024.0 * 1024.0;
    return SwapUsage{.usedMB = static_cast<double>(usage.xsu_used) / bytesPerMB,
                     .totalMB = static_cast<double>(usage.xsu_total) / bytesPerMB};
}

}  // namespace quenchly::demo
