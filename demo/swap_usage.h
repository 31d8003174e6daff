#pragma once

#include <optional>

namespace quenchly::demo {

struct SwapUsage {
    double usedMB;
    double totalMB;
};

/// Swap in use; none where the machine has no swap or does not tell.
std::optional<SwapUsage> readSwapUsage();

}  // namespace quenchly::demo
