#include <gtest/gtest.h>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <locale>
#include <optional>
#include <string>

#include "decimal_number.h"
#include "heat_state.h"
#include "live_metrics.h"
#include "relative_time.h"
#include "status_json.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

class CommaPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The C++ locale writes 1.234,5; so does the C locale where the machine has one that does.
class CommaLocale : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name :
             {"de_DE.UTF-8", "de_DE.utf8", "de_AT.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8", "pl_PL.UTF-8"})
            if (std::setlocale(LC_ALL, name) != nullptr)
                break;
        before_ = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
    }

    void TearDown() override
    {
        std::locale::global(before_);
        std::setlocale(LC_ALL, "C");
    }

private:
    std::locale before_;
};

TEST_F(CommaLocale, NumbersOfAFileAreReadUnchanged)
{
    const auto state = HeatState::parse(R"({"coolStreak":"1234567","hotStreak":1234567,
        "lastMetrics":{"load1":1234.5,"swapPct":"31.6","swapUsedMB":"2.15e3","cpuCount":4000}})");
    ASSERT_TRUE(state && state->lastMetrics);
    EXPECT_EQ(state->coolStreak, 1234567);
    EXPECT_EQ(state->hotStreak, 1234567);
    EXPECT_EQ(state->lastMetrics->load1, 1234.5);
    EXPECT_EQ(state->lastMetrics->swapPct, 31.6);
    EXPECT_EQ(state->lastMetrics->swapUsedMB, 2150.0);
    EXPECT_EQ(state->lastMetrics->menubarLine, "load 31% · swap 2.1 GB (32%)");
}

TEST_F(CommaLocale, DecimalTextsKeepThePoint)
{
    EXPECT_EQ(decimalNumber("3.5"), 3.5);
    EXPECT_EQ(decimalNumber("1234567.25"), 1234567.25);
    EXPECT_EQ(decimalNumber("3,5"), std::nullopt);
    EXPECT_EQ(decimalNumber("1.234,5"), std::nullopt);
}

TEST_F(CommaLocale, FiguresAreWrittenUnchanged)
{
    const QuenchStatus status{.pausedTargets = {{.label = "A", .pid = 1234567}},
                              .lastMetrics = LastMetrics{.load1 = 1234.5, .swapPct = 31.6}};
    const std::string json = statusJson(status);
    EXPECT_NE(json.find(R"("pid":1234567,)"), std::string::npos) << json;
    EXPECT_NE(json.find(R"("load1":1234.5,"swapPct":31.6,)"), std::string::npos) << json;
}

TEST_F(CommaLocale, TheUsageTextOfMacOSIsReadUnchanged)
{
    const auto swap = LiveMetricsSampler::swapFromUsageText("total = 2048.00M  used = 1843.20M  free = 204.80M");
    EXPECT_EQ(swap.usedMB, 1843.2);
    EXPECT_EQ(swap.pct, 90.0);
    const auto metrics = LiveMetricsSampler::sampleFrom({.load1 = 1.0, .cpuCount = 8, .swap = swap}, false);
    ASSERT_TRUE(metrics);
    EXPECT_EQ(metrics->menubarLine, "load 13% · swap 1.8 GB (90%)");
}

TEST_F(CommaLocale, TimesAreReadUnchanged)
{
    const Instant instant = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + 12h + 250ms;
    EXPECT_EQ(RelativeTime::date("2026-03-01T12:00:00.250Z"), instant);
    const std::optional<Text> longAgo = "2000-01-01T00:00:00Z";
    EXPECT_EQ(RelativeTime::ageAgo(longAgo, instant), "229356h 0m ago");
}

}  // namespace
}  // namespace quenchly
