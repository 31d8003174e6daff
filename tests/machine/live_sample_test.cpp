#include "live_sample.h"

#include <gtest/gtest.h>

#include "metrics_line.h"

namespace quenchly {
namespace {

TEST(LiveSample, ThisMachineCanBeSampled)
{
    const auto metrics = LiveMetricsSampler::sample(true);
    ASSERT_TRUE(metrics);
    EXPECT_GE(metrics->load1, 0);
    EXPECT_GE(metrics->cpuCount, 1);
    EXPECT_LE(metrics->cpuLoadPct, 100);
    EXPECT_TRUE(metrics->swapCritical);
    EXPECT_EQ(metrics->swapPct.has_value(), metrics->swapUsedMB.has_value());
    EXPECT_EQ(metrics->menubarLine,
              metricsLine(
                  {.cpuLoadPct = metrics->cpuLoadPct, .swapPct = metrics->swapPct, .swapUsedMB = metrics->swapUsedMB}));
}

}  // namespace
}  // namespace quenchly
