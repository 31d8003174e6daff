#include "live_metrics.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "metrics_line.h"
#include "quench_status.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace LiveMetricsSampler;

TEST(MetricsLine, UsedSwapIsWrittenInTheUnitThatFitsIt)
{
    const std::pair<double, const char*> rows[] = {
        {0, "0 MB"},        {0.4, "0 MB"},       {0.5, "1 MB"},       {512, "512 MB"},
        {1023, "1023 MB"},  {1023.4, "1023 MB"}, {1023.9, "1024 MB"}, {1024, "1.0 GB"},
        {1075.2, "1.1 GB"}, {1638.4, "1.6 GB"},  {2150, "2.1 GB"},    {10188.8, "10.0 GB"},
        {10230, "10.0 GB"}, {10239, "10.0 GB"},  {10240, "10 GB"},    {10751, "10 GB"},
        {10752, "11 GB"},   {102400, "100 GB"},  {-0.0, "0 MB"},      {1e300, "9223372036854775807 GB"},
    };
    for (const auto& [usedMB, expected] : rows)
        EXPECT_EQ(metricsLine({.cpuLoadPct = 5, .swapPct = std::nullopt, .swapUsedMB = usedMB}),
                  std::string("load 5% · swap ") + expected)
            << usedMB;
}

TEST(MetricsLine, TheSwapPartDependsOnWhatIsKnown)
{
    const struct {
        const char* condition;
        MetricsLineFigures figures;
        const char* expected;
    } rows[] = {
        {"both", {.cpuLoadPct = 73, .swapPct = 45, .swapUsedMB = 3277}, "load 73% · swap 3.2 GB (45%)"},
        {"percentage only", {.cpuLoadPct = 73, .swapPct = 45}, "load 73% · swap 45%"},
        {"amount only", {.cpuLoadPct = 73, .swapUsedMB = 512}, "load 73% · swap 512 MB"},
        {"neither", {.cpuLoadPct = 73}, "load 73% · swap n/a"},
        {"a negative amount", {.cpuLoadPct = 73, .swapPct = 45, .swapUsedMB = -0.1}, "load 73% · swap 45%"},
        {"a negative amount only", {.cpuLoadPct = 73, .swapUsedMB = -0.1}, "load 73% · swap n/a"},
        {"an amount that is no number",
         {.cpuLoadPct = 73, .swapUsedMB = std::numeric_limits<double>::quiet_NaN()},
         "load 73% · swap n/a"},
        {"halves go up", {.cpuLoadPct = 0, .swapPct = 44.5}, "load 0% · swap 45%"},
        {"halves go away from zero", {.cpuLoadPct = -1, .swapPct = -44.5}, "load -1% · swap -45%"},
        {"no negative zero", {.cpuLoadPct = 0, .swapPct = -0.4}, "load 0% · swap 0%"},
        {"beyond an integer", {.cpuLoadPct = 0, .swapPct = 1e300}, "load 0% · swap 9223372036854775807%"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(metricsLine(row.figures), row.expected) << row.condition;
}

TEST(MetricsLine, LoadInPercentOfTheProcessors)
{
    const struct {
        double load1;
        std::int64_t cpuCount;
        std::int64_t percent;
    } rows[] = {
        {.load1 = 1.0, .cpuCount = 4, .percent = 25},
        {.load1 = 9.0, .cpuCount = 4, .percent = 100},
        {.load1 = 4.0, .cpuCount = 4, .percent = 100},
        {.load1 = 3.98, .cpuCount = 4, .percent = 100},
        {.load1 = 3.97, .cpuCount = 4, .percent = 99},
        {.load1 = 0.96, .cpuCount = 8, .percent = 12},
        {.load1 = 1.0, .cpuCount = 8, .percent = 13},
        {.load1 = 0.5, .cpuCount = 0, .percent = 50},
        {.load1 = 0.5, .cpuCount = -3, .percent = 50},
        {.load1 = 0.0, .cpuCount = 8, .percent = 0},
        {.load1 = -0.001, .cpuCount = 8, .percent = 0},
        {.load1 = -1.0, .cpuCount = 8, .percent = -13},
        {.load1 = std::numeric_limits<double>::infinity(), .cpuCount = 8, .percent = 100},
        {.load1 = std::numeric_limits<double>::quiet_NaN(), .cpuCount = 8, .percent = 0},
        {.load1 = std::numeric_limits<double>::max(), .cpuCount = 1, .percent = 100},
    };
    for (const auto& row : rows)
        EXPECT_EQ(cpuLoadPercent(row.load1, row.cpuCount), row.percent) << row.load1 << " on " << row.cpuCount;
}

TEST(LiveMetrics, TheUsageTextOfMacOSIsRead)
{
    const struct {
        const char* text;
        std::optional<double> usedMB;
        std::optional<double> pct;
    } rows[] = {
        {"total = 2048.00M  used = 1843.20M  free = 204.80M  (encrypted)", 1843.2, 90.0},
        {"total = 2048.00M  used = 1844.00M  free = 204.00M  (encrypted)", 1844.0, 1844.0 / 2048 * 100},
        {"total = 1024.00M used = 0.00M", 0.0, 0.0},
        {"vm.swapusage: total = 1000.00M     used = 250.50M  free = 749.50M", 250.5, 25.05},
        {"total = 100M  used = 200M", 200.0, 200.0},
        {"total = 0.00M  used = 0.00M  free = 0.00M  (encrypted)", {}, {}},
        {"", {}, {}},
        {"total = 2048.00M", {}, {}},
        {"total = 2048.00M, used = 1.00M", {}, {}},
        {"total = 2048.00Mused = 1.00M", {}, {}},
        {"total = 2048.00M\tused = 1.00M", {}, {}},
        {"total = 2048.00M \n used = 1.00M", {}, {}},
        {"total = 2.0G  used = 1.0G", {}, {}},
        {"total = -2048.00M  used = 1.00M", {}, {}},
        {"total = 20.48.00M  used = 1.00M", {}, {}},
        {"total = 2048.00M  used = .M", {}, {}},
        {"total = 2048,00M  used = 1,00M", {}, {}},
        {"TOTAL = 2048.00M  USED = 1.00M", {}, {}},
        {"sysctl: unknown oid 'vm.swapusage'", {}, {}},
    };
    for (const auto& row : rows) {
        const Swap swap = swapFromUsageText(row.text);
        EXPECT_EQ(swap.usedMB, row.usedMB) << row.text;
        EXPECT_EQ(swap.pct, row.pct) << row.text;
    }
}

TEST(LiveMetrics, AnEndlessUsageTextIsNotRead)
{
    const std::string digits(1 << 20, '1');
    EXPECT_EQ(swapFromUsageText("total = " + digits + "M  used = 1.00M"), Swap());
    EXPECT_EQ(swapFromUsageText("total = 2048.00M" + std::string(1 << 20, ' ') + "used = 1.00M"), Swap());
}

TEST(LiveMetrics, SwapAmountsNeedATotalAboveZero)
{
    EXPECT_EQ(swapFromAmounts(2048, 512), (Swap{.usedMB = 512.0, .pct = 25.0}));
    EXPECT_EQ(swapFromAmounts(0, 512), Swap());
    EXPECT_EQ(swapFromAmounts(-1, 512), Swap());
    EXPECT_EQ(swapFromAmounts(std::numeric_limits<double>::quiet_NaN(), 512), Swap());
}

TEST(LiveMetrics, ASampleIsMadeFromItsReadings)
{
    const auto metrics = sampleFrom({.load1 = 5.84, .cpuCount = 8, .swap = {.usedMB = 3277.0, .pct = 45.0}}, false);
    ASSERT_TRUE(metrics);
    EXPECT_EQ(metrics->load1, 5.84);
    EXPECT_EQ(metrics->cpuCount, 8);
    EXPECT_EQ(metrics->cpuLoadPct, 73);
    EXPECT_EQ(metrics->swapPct, 45.0);
    EXPECT_EQ(metrics->swapUsedMB, 3277.0);
    EXPECT_FALSE(metrics->swapCritical);
    EXPECT_EQ(metrics->menubarLine, "load 73% · swap 3.2 GB (45%)");
}

TEST(LiveMetrics, WithoutALoadThereIsNoSampleEvenWhenSwapIsKnown)
{
    EXPECT_EQ(sampleFrom({.load1 = std::nullopt, .cpuCount = 8, .swap = {.usedMB = 1.0, .pct = 95.0}}, true),
              std::nullopt);
}

TEST(LiveMetrics, LoadIsCappedAndProcessorsAreAtLeastOne)
{
    const auto busy = sampleFrom({.load1 = 9.0, .cpuCount = 4}, false);
    ASSERT_TRUE(busy);
    EXPECT_EQ(busy->cpuLoadPct, 100);
    EXPECT_EQ(busy->menubarLine, "load 100% · swap n/a");
    for (const std::int64_t cpuCount : {0, -1}) {
        const auto metrics = sampleFrom({.load1 = 0.5, .cpuCount = cpuCount}, false);
        ASSERT_TRUE(metrics);
        EXPECT_EQ(metrics->cpuCount, 1);
        EXPECT_EQ(metrics->cpuLoadPct, 50);
    }
}

TEST(LiveMetrics, CriticalSwapIsRaisedByTheReadingAndNeverLowered)
{
    const struct {
        std::optional<double> pct;
        bool raised;
    } rows[] = {
        {.pct = std::nullopt, .raised = false},
        {.pct = 0.0, .raised = false},
        {.pct = 90.0, .raised = false},
        {.pct = 90.04, .raised = true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pct.value_or(-1));
        const Readings readings{.load1 = 1.0, .cpuCount = 1, .swap = {.usedMB = 1.0, .pct = row.pct}};
        EXPECT_EQ(sampleFrom(readings, false)->swapCritical, row.raised);
        EXPECT_TRUE(sampleFrom(readings, true)->swapCritical) << "it was critical before";
    }
}

class LiveStatus : public ::testing::Test {
protected:
    QuenchStatus status{.icon = QuenchIcon::protect,
                        .barTint = QuenchBarTint::protect,
                        .headline = "headline",
                        .detail = "load 20% · swap n/a. High load. Watching.",
                        .lastCheckISO = "2026-03-01T12:00:00Z",
                        .lastCheckAge = "42s ago",
                        .pausedTargets = {{.label = "A"}},
                        .quarantine = {{.id = "B"}},
                        .tone = QuenchTone::watch,
                        .observeOnly = true,
                        .managementDisabled = true,
                        .metricsLine = "load 20% · swap n/a",
                        .lastMetrics = LastMetrics{.load1 = 1},
                        .swapCritical = false,
                        .stillOverloaded = true,
                        .slowActive = true,
                        .agentInstalled = true,
                        .memoryReliefTip = "tip"};
    LastMetrics metrics{.load1 = 5, .swapCritical = true, .menubarLine = "load 73% · swap 45%"};
};

TEST_F(LiveStatus, TheSampleReplacesTheFilesMetricsAlsoInTheDetail)
{
    QuenchStatus expected = status;
    expected.detail = "load 73% · swap 45%. High load. Watching.";
    expected.metricsLine = "load 73% · swap 45%";
    expected.lastMetrics = metrics;
    expected.swapCritical = true;
    const QuenchStatus before = status;
    EXPECT_EQ(status.withLiveMetrics(metrics), expected);
    EXPECT_EQ(status, before);
}

TEST_F(LiveStatus, ASampleLowersCriticalSwapWhenItSaysSo)
{
    status.swapCritical = true;
    metrics.swapCritical = false;
    EXPECT_FALSE(status.withLiveMetrics(metrics).swapCritical);
}

TEST_F(LiveStatus, EveryOccurrenceOfTheOldLineIsReplaced)
{
    status.detail = "load 20% · swap n/a and load 20% · swap n/a";
    EXPECT_EQ(status.withLiveMetrics(metrics).detail, "load 73% · swap 45% and load 73% · swap 45%");
    status.metricsLine = "l";
    status.detail = "lull";
    EXPECT_EQ(status.withLiveMetrics(metrics).detail, "load 73% · swap 45%uload 73% · swap 45%load 73% · swap 45%");
}

TEST_F(LiveStatus, WithoutAnOldLineTheDetailStaysAndTheRestIsSet)
{
    for (const std::optional<Text>& line : {std::optional<Text>(), std::optional<Text>("")}) {
        status.metricsLine = line;
        const QuenchStatus live = status.withLiveMetrics(metrics);
        EXPECT_EQ(live.detail, status.detail);
        EXPECT_EQ(live.metricsLine, "load 73% · swap 45%");
        EXPECT_EQ(live.lastMetrics, metrics);
        EXPECT_TRUE(live.swapCritical);
    }
}

}  // namespace
}  // namespace quenchly
