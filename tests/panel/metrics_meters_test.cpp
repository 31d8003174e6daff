#include "metrics_meters.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "help_copy.h"
#include "shown_language.h"

namespace quenchly {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

constexpr std::uint32_t blue = 0x4E93C6;
constexpr std::uint32_t teal = 0x6B8FB5;
constexpr std::uint32_t amber = 0xE19A3C;
constexpr std::uint32_t clay = 0xF09A74;
constexpr std::uint32_t red = 0xD4483C;

using testing::allLanguages;
using MetricsMetersTest = testing::InEnglish;

MeterContent load(const LastMetrics& metrics)
{
    return MetricsMeters::of(metrics).load;
}

MeterContent swap(const LastMetrics& metrics)
{
    return MetricsMeters::of(metrics).swap;
}

TEST_F(MetricsMetersTest, AnOrdinaryRecordGivesBothMeters)
{
    const MetricsMeters meters = MetricsMeters::of(
        {.load1 = 2.5, .swapPct = 31.4, .swapUsedMB = 3482, .cpuCount = 8, .cpuLoadPct = 37, .menubarLine = "other"});
    EXPECT_EQ(meters.load, (MeterContent{.label = "load",
                                         .help = MenuHelpCopy::paragraph("help_load_meter"),
                                         .value = "37%",
                                         .fill = 31.25,
                                         .accent = blue}));
    EXPECT_EQ(meters.swap, (MeterContent{.label = "swap",
                                         .help = MenuHelpCopy::paragraph("help_swap_meter"),
                                         .subtitle = "3.4 GB",
                                         .value = "31%",
                                         .fill = 31.4,
                                         .accent = blue}));
}

TEST_F(MetricsMetersTest, TheLoadBarFollowsTheLoadAverageForEachProcessor)
{
    const struct {
        double load1;
        std::int64_t cpuCount;
        double fill;
    } rows[] = {
        {.load1 = 0, .cpuCount = 8, .fill = 0},
        {.load1 = 4, .cpuCount = 8, .fill = 50},
        {.load1 = 8, .cpuCount = 8, .fill = 100},
        {.load1 = 8.001, .cpuCount = 8, .fill = 100},
        {.load1 = 12, .cpuCount = 8, .fill = 100},
        {.load1 = 3, .cpuCount = 0, .fill = 100},
        {.load1 = 0.5, .cpuCount = 0, .fill = 50},
        {.load1 = 0.5, .cpuCount = -4, .fill = 50},
        {.load1 = 0.5, .cpuCount = least, .fill = 50},
        {.load1 = 1, .cpuCount = most, .fill = 100 / 9223372036854775808.0},
        {.load1 = -0.1, .cpuCount = 8, .fill = 0},
        {.load1 = 1e308, .cpuCount = 1, .fill = 100},
        {.load1 = infinity, .cpuCount = 8, .fill = 100},
        {.load1 = -infinity, .cpuCount = 8, .fill = 0},
        {.load1 = notANumber, .cpuCount = 8, .fill = 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(load({.load1 = row.load1, .cpuCount = row.cpuCount}).fill, row.fill)
            << row.load1 << " on " << row.cpuCount;
}

TEST_F(MetricsMetersTest, TheLoadValueAndItsAccentFollowThePercentAlone)
{
    const struct {
        std::int64_t percent;
        const char* value;
        std::uint32_t accent;
    } rows[] = {
        {least, "-9223372036854775808%", blue},
        {-1, "-1%", blue},
        {0, "0%", blue},
        {44, "44%", blue},
        {45, "45%", teal},
        {64, "64%", teal},
        {69, "69%", teal},
        {70, "70%", amber},
        {89, "89%", amber},
        {90, "90%", red},
        {150, "150%", red},
        {most, "9223372036854775807%", red},
    };
    for (const auto& row : rows) {
        const MeterContent meter =
            load({.load1 = 12, .swapUsedMB = 512, .cpuCount = 8, .cpuLoadPct = row.percent, .swapCritical = true});
        SCOPED_TRACE(row.value);
        EXPECT_EQ(meter.value, row.value);
        EXPECT_EQ(meter.accent, row.accent);
        EXPECT_EQ(meter.fill, 100) << "the bar does not follow the percent";
        EXPECT_EQ(meter.subtitle, "");
    }
}

TEST_F(MetricsMetersTest, TheSwapBarFollowsThePercent)
{
    const std::pair<std::optional<double>, double> rows[] = {
        {std::nullopt, 0}, {0, 0},    {0.5, 0.5},      {99.9, 99.9},   {100, 100},
        {150, 100},        {-0.1, 0}, {infinity, 100}, {-infinity, 0}, {notANumber, 0},
    };
    for (const auto& [percent, fill] : rows)
        EXPECT_EQ(swap({.load1 = 3, .swapPct = percent, .swapUsedMB = 2048}).fill, fill) << percent.value_or(-1000);
}

TEST_F(MetricsMetersTest, TheSwapAccentIsChosenInItsOrder)
{
    const std::pair<std::optional<double>, std::uint32_t> rows[] = {
        {std::nullopt, teal}, {-1, blue},    {0, blue},       {44.999, blue}, {45, teal}, {69.999, teal},
        {70, amber},          {89.9, amber}, {89.999, amber}, {90, red},      {95, red},  {infinity, red},
        {notANumber, teal},
    };
    for (const auto& [percent, accent] : rows) {
        SCOPED_TRACE(percent.value_or(-1000));
        EXPECT_EQ(swap({.swapPct = percent, .cpuLoadPct = 95}).accent, accent);
        EXPECT_EQ(swap({.swapPct = percent, .cpuLoadPct = 95, .swapCritical = true}).accent, clay);
    }
}

TEST_F(MetricsMetersTest, TheSwapValueIsTheRoundedPercent)
{
    const std::pair<std::optional<double>, const char*> rows[] = {
        {std::nullopt, "n/a"}, {0, "0%"},      {0.49, "0%"},  {0.5, "1%"},  {1.5, "2%"},   {2.5, "3%"},
        {44.6, "45%"},         {99.5, "100%"}, {150, "150%"}, {-0.4, "0%"}, {-0.5, "-1%"}, {-2.5, "-3%"},
    };
    for (const auto& [percent, value] : rows)
        EXPECT_EQ(swap({.swapPct = percent, .swapUsedMB = 512}).value, value) << percent.value_or(-1000);
}

TEST_F(MetricsMetersTest, TheSwapSubtitleIsTheAmountInUse)
{
    const std::pair<std::optional<double>, const char*> rows[] = {
        {std::nullopt, ""}, {-1, ""},           {-0.001, ""},      {-infinity, ""},
        {notANumber, ""},   {-0.0, "0 MB"},     {0, "0 MB"},       {0.49, "0 MB"},
        {0.5, "1 MB"},      {512, "512 MB"},    {1023, "1023 MB"}, {1023.6, "1024 MB"},
        {1024, "1.0 GB"},   {1280, "1.3 GB"},   {3482, "3.4 GB"},  {10188, "9.9 GB"},
        {10239, "10.0 GB"}, {10240, "10 GB"},   {10751, "10 GB"},  {10752, "11 GB"},
        {12288, "12 GB"},   {131072, "128 GB"},
    };
    for (const auto& [amount, subtitle] : rows)
        EXPECT_EQ(swap({.swapPct = 20, .swapUsedMB = amount}).subtitle, subtitle) << amount.value_or(-1000);
}

TEST_F(MetricsMetersTest, AnAmountIsShownWithoutAPercentAndAPercentWithoutAnAmount)
{
    const MeterContent amountOnly = swap({.swapUsedMB = 2150});
    EXPECT_EQ(amountOnly.subtitle, "2.1 GB");
    EXPECT_EQ(amountOnly.value, "n/a");
    const MeterContent percentOnly = swap({.swapPct = 31});
    EXPECT_EQ(percentOnly.subtitle, "");
    EXPECT_EQ(percentOnly.value, "31%");
}

TEST_F(MetricsMetersTest, CriticalSwapWithoutAPercentIsClayExtraMemoryOnDisk)
{
    const MeterContent meter = swap({.swapCritical = true});
    EXPECT_EQ(meter.label, "extra memory on disk");
    EXPECT_EQ(meter.value, "n/a");
    EXPECT_EQ(meter.fill, 0);
    EXPECT_EQ(meter.accent, clay);
    EXPECT_EQ(meter.help, MenuHelpCopy::paragraph("help_swap_meter"));
}

TEST_F(MetricsMetersTest, FiguresBeyondAllMeasureGiveShortTexts)
{
    for (const double figure : {1e18, 1e300, infinity}) {
        const MeterContent meter = swap({.swapPct = figure, .swapUsedMB = figure});
        EXPECT_TRUE(meter.subtitle.ends_with(" GB")) << meter.subtitle;
        EXPECT_TRUE(meter.value.ends_with("%")) << meter.value;
        EXPECT_LE(meter.subtitle.size() + meter.value.size(), 50u);
        EXPECT_EQ(meter.fill, 100);
    }
}

TEST_F(MetricsMetersTest, TheLabelsAndTheirHelpAreInTheLanguageInForce)
{
    for (const AppLanguage language : allLanguages) {
        SCOPED_TRACE(rawValue(language));
        L10n::testingLanguage = language;
        for (const bool critical : {false, true}) {
            const MetricsMeters meters = MetricsMeters::of({.cpuLoadPct = 37, .swapCritical = critical});
            EXPECT_EQ(meters.load.label, L10n::t("load"));
            EXPECT_EQ(meters.swap.label, L10n::t(critical ? "extra_memory_on_disk" : "swap"));
            EXPECT_EQ(meters.load.help, MenuHelpCopy::paragraph("help_load_meter"));
            EXPECT_EQ(meters.swap.help, MenuHelpCopy::paragraph("help_swap_meter"));
        }
    }
}

TEST_F(MetricsMetersTest, HelpIsFoundByTheEnglishLabelInEveryLanguage)
{
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        EXPECT_EQ(MetricsMeters::meterHelp("load"), MenuHelpCopy::paragraph("help_load_meter"));
        EXPECT_EQ(MetricsMeters::meterHelp("swap"), MenuHelpCopy::paragraph("help_swap_meter"));
        EXPECT_EQ(MetricsMeters::meterHelp("extra memory on disk"), MenuHelpCopy::paragraph("help_swap_meter"));
        for (const char* other : {"", "Load", "load ", "swaps", "memory", "help_load_meter"})
            EXPECT_EQ(MetricsMeters::meterHelp(other), "") << other;
    }
    L10n::testingLanguage = AppLanguage::ja;
    EXPECT_EQ(MetricsMeters::meterHelp("부하"), "") << "the label of another language";
}

}  // namespace
}  // namespace quenchly
