#include "metrics_meters.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "l10n.h"

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

constexpr std::array allLanguages{AppLanguage::en,     AppLanguage::ja,     AppLanguage::ko,
                                  AppLanguage::zhHans, AppLanguage::zhHant, AppLanguage::tl};

class MetricsMetersTest : public ::testing::Test {
protected:
    MetricsMetersTest() { L10n::testingLanguage = AppLanguage::en; }
    ~MetricsMetersTest() override { L10n::testingLanguage.reset(); }
};

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
    EXPECT_EQ(meters.load,
              (MeterContent{
                  .label = "load", .help = L10n::t("help_load_meter"), .value = "37%", .fill = 31.25, .accent = blue}));
    EXPECT_EQ(meters.swap, (MeterContent{.label = "swap",
                                         .help = L10n::t("help_swap_meter"),
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
        {0, 8, 0},    {4, 8, 50},      {8, 8, 100},        {8.001, 8, 100},   {12, 8, 100},
        {3, 0, 100},  {0.5, 0, 50},    {0.5, -4, 50},      {0.5, least, 50},  {1, most, 100 / 9223372036854775808.0},
        {-0.1, 8, 0}, {1e308, 1, 100}, {infinity, 8, 100}, {-infinity, 8, 0}, {notANumber, 8, 0},
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
        EXPECT_EQ(meter.value, row.value);
        EXPECT_EQ(meter.accent, row.accent) << row.percent;
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
    const struct {
        std::optional<double> percent;
        std::uint32_t accent;
    } rows[] = {
        {std::nullopt, teal}, {-1, blue},    {0, blue},       {44.999, blue}, {45, teal}, {69.999, teal},
        {70, amber},          {89.9, amber}, {89.999, amber}, {90, red},      {95, red},  {infinity, red},
        {notANumber, teal},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(swap({.swapPct = row.percent, .cpuLoadPct = 95}).accent, row.accent) << row.percent.value_or(-1000);
        EXPECT_EQ(swap({.swapPct = row.percent, .cpuLoadPct = 95, .swapCritical = true}).accent, clay)
            << row.percent.value_or(-1000);
    }
}

TEST_F(MetricsMetersTest, TheSwapValueIsTheRoundedPercent)
{
    const std::pair<std::optional<double>, const char*> rows[] = {
        {std::nullopt, "n/a"}, {0, "0%"},      {0.49, "0%"},  {0.5, "1%"},  {1.5, "2%"},   {2.5, "3%"},
        {44.6, "45%"},         {99.5, "100%"}, {150, "150%"}, {-0.4, "0%"}, {-0.5, "-1%"}, {-2.5, "-3%"},
    };
    for (const auto& [percent, value] : rows)
        EXPECT_EQ(swap({.swapPct = percent, .swapUsedMB = 512}).value, value);
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
    EXPECT_EQ(meter.help, L10n::t("help_swap_meter"));
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

TEST_F(MetricsMetersTest, TheLabelsAndTheirHelpAreSpokenInSixLanguages)
{
    const struct {
        std::array<const char*, 6> load, swap, critical;  // in the order of `allLanguages`
    } words = {{"load", "負荷", "부하", "负载", "負載", "load"},
               {"swap", "スワップ", "스왑", "交换", "交換", "swap"},
               {"extra memory on disk", "ディスク上の追加メモリ", "디스크 추가 메모리", "磁盘额外内存",
                "磁碟額外記憶體", "extra memory sa disk"}};
    for (std::size_t i = 0; i < allLanguages.size(); ++i) {
        L10n::testingLanguage = allLanguages[i];
        const MetricsMeters calm = MetricsMeters::of({.cpuLoadPct = 37, .swapCritical = false});
        const MetricsMeters critical = MetricsMeters::of({.cpuLoadPct = 37, .swapCritical = true});
        EXPECT_EQ(calm.load.label, words.load[i]);
        EXPECT_EQ(critical.load.label, words.load[i]);
        EXPECT_EQ(calm.swap.label, words.swap[i]);
        EXPECT_EQ(critical.swap.label, words.critical[i]);
        for (const MetricsMeters& meters : {calm, critical}) {
            EXPECT_EQ(meters.load.help, L10n::t("help_load_meter"));
            EXPECT_EQ(meters.swap.help, L10n::t("help_swap_meter"));
        }
    }
}

TEST_F(MetricsMetersTest, HelpIsFoundByTheEnglishLabelInEveryLanguage)
{
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        EXPECT_EQ(MetricsMeters::meterHelp("load"), L10n::t("help_load_meter"));
        EXPECT_EQ(MetricsMeters::meterHelp("swap"), L10n::t("help_swap_meter"));
        EXPECT_EQ(MetricsMeters::meterHelp("extra memory on disk"), L10n::t("help_swap_meter"));
        for (const char* other : {"", "Load", "load ", "swaps", "memory", "help_load_meter"})
            EXPECT_EQ(MetricsMeters::meterHelp(other), "") << other;
    }
    L10n::testingLanguage = AppLanguage::ja;
    EXPECT_EQ(MetricsMeters::meterHelp("부하"), "") << "the label of another language";
}

}  // namespace
}  // namespace quenchly
