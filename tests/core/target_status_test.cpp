#include "target_status.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

using TargetStatusLogic::Facts;
using TargetStatusLogic::Resolution;

TEST(TargetStatus, ARunningProcessIsEasedBackForAnyReasonAndAnAbsentOneIsIdleWhateverIsSaid)
{
    const Resolution idle{TargetStatusKind::idle, "Idle"};
    const Resolution running{TargetStatusKind::running, "running"};
    const Resolution easedBack{TargetStatusKind::easedBack, "Eased back"};
    const struct {
        const char* said;
        Facts facts;
        Resolution whilePresent;
    } rows[] = {
        {"nothing", {}, running},
        {"listed", {.listedInPaused = true}, easedBack},
        {"stopped", {.processStopped = true}, easedBack},
        {"slowed", {.slowOrThrottle = true}, easedBack},
        {"listed, stopped", {.listedInPaused = true, .processStopped = true}, easedBack},
        {"listed, slowed", {.listedInPaused = true, .slowOrThrottle = true}, easedBack},
        {"stopped, slowed", {.processStopped = true, .slowOrThrottle = true}, easedBack},
        {"everything", {.listedInPaused = true, .processStopped = true, .slowOrThrottle = true}, easedBack},
    };
    for (const auto& row : rows) {
        Facts facts = row.facts;
        facts.processPresent = true;
        EXPECT_EQ(TargetStatusLogic::resolve(facts), row.whilePresent) << row.said;
        facts.processPresent = false;
        EXPECT_EQ(TargetStatusLogic::resolve(facts), idle) << row.said;
    }
}

}  // namespace
}  // namespace quenchly
