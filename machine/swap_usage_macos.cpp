#include "chip_facts.h"
#include "swap_usage.h"

namespace quenchly::LiveMetricsSampler {

Swap readSwap()
{
    return swapFromUsageText(ChipLabel::shell("sysctl -n vm.swapusage 2>/dev/null"));
}

}  // namespace quenchly::LiveMetricsSampler
