#include "target_status.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

using TargetStatusLogic::Facts;
using TargetStatusLogic::Resolution;

TEST(TargetStatus, EveryCombination)
{
    const Resolution idle{TargetStatusKind::idle, "Idle"};
    const Resolution running{TargetStatusKind::running, "running"};
    const Resolution easedBack{TargetStatusKind::easedBack, "Eased back"};
    for (int bits = 0; bits < 16; ++bits) {
        const Facts facts{.processPresent = (bits & 1) != 0,
                          .listedInPaused = (bits & 2) != 0,
                          .processStopped = (bits & 4) != 0,
                          .slowOrThrottle = (bits & 8) != 0};
        const Resolution& expected = bits % 2 == 0 ? idle : bits == 1 ? running : easedBack;
        EXPECT_EQ(TargetStatusLogic::resolve(facts), expected) << bits;
    }
}

TEST(TargetStatus, AnAbsentProcessIsIdleEvenWhenListedAsHeld)
{
    EXPECT_EQ(TargetStatusLogic::resolve({.listedInPaused = true}).kind, TargetStatusKind::idle);
}

}  // namespace
}  // namespace quenchly
