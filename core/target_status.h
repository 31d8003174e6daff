#pragma once

#include <string_view>

#include "verdict_story.h"

namespace quenchly {

enum class TargetStatusKind { idle, running, easedBack };

/// Classifies one listed AI target for the target list.
namespace TargetStatusLogic {

struct Facts {
    bool processPresent = false;
    bool listedInPaused = false;
    bool processStopped = false;
    bool slowOrThrottle = false;
};
struct Resolution {
    TargetStatusKind kind = TargetStatusKind::idle;
    std::string_view detail;  ///< English

    bool operator==(const Resolution&) const = default;
};

constexpr Resolution resolve(const Facts& facts)
{
    if (!facts.processPresent)
        return {TargetStatusKind::idle, "Idle"};
    if (facts.listedInPaused || facts.processStopped || facts.slowOrThrottle)
        return {TargetStatusKind::easedBack, VerdictStoryLogic::easedBackTargetLine};
    return {TargetStatusKind::running, "running"};
}

}  // namespace TargetStatusLogic
}  // namespace quenchly
