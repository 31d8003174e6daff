#include "chip_facts.h"

namespace quenchly::ChipLabel {

Facts facts()
{
    return {.brand = shell("sysctl -n machdep.cpu.brand_string"), .model = shell("sysctl -n hw.model")};
}

}  // namespace quenchly::ChipLabel
