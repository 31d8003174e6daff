#include "relative_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "noon.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;
using testing::noon;

TEST(RelativeTime, EveryAcceptedFormNamesItsInstant)
{
    const std::pair<const char*, Instant> rows[] = {
        {"2026-03-01T12:00:00.123Z", noon + 123ms},
        {"2026-03-01T12:00:00.5Z", noon + 500ms},
        {"2026-03-01T12:00:00.123456Z", noon + 123456us},
        {"2026-03-01T12:00:00.1234567899Z", noon + 123456us},
        {"2026-03-01T12:00:00.000Z", noon},
        {"2026-03-01T14:00:00.250+02:00", noon + 250ms},
        {"2026-03-01T12:00:00Z", noon},
        {"2026-03-01T21:00:00+09:00", noon},
        {"2026-03-01T06:30:00-05:30", noon},
        {"2026-03-02T02:00:00+14:00", noon},
        {"2026-03-01T12:00:00+00:00", noon},
        {"2026-03-01T12:00:00", noon},
        {"2024-02-29T12:00:00Z", sys_days(std::chrono::year(2024) / 2 / 29) + 12h},
        {"2000-02-29T00:00:00", sys_days(std::chrono::year(2000) / 2 / 29)},
        {"1970-01-01T00:00:00Z", Instant()},
        {"1969-12-31T23:59:59.500Z", Instant() - 500ms},
        {"9999-12-31T23:59:59Z", sys_days(std::chrono::year(9999) / 12 / 31) + 23h + 59min + 59s},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(RelativeTime::date(text), expected) << text;
}

TEST(RelativeTime, EverythingElseIsNoTime)
{
    for (const char* text : {"",
                             " ",
                             "now",
                             "2026-03-01",
                             "12:00:00",
                             "2026-03-01 12:00:00Z",
                             "2026-03-01T12:00",
                             "2026-03-01T12:00Z",
                             "2026-03-01T12:00:0Z",
                             "2026-3-1T12:00:00Z",
                             "26-03-01T12:00:00Z",
                             "02026-03-01T12:00:00Z",
                             "+2026-03-01T12:00:00Z",
                             "-2026-03-01T12:00:00Z",
                             "2026-13-01T12:00:00Z",
                             "2026-00-01T12:00:00Z",
                             "2026-02-29T12:00:00Z",
                             "1900-02-29T12:00:00Z",
                             "2026-04-31T12:00:00Z",
                             "2026-03-00T12:00:00Z",
                             "2026-03-01T25:00:00Z",
                             "2026-03-01T12:60:00Z",
                             "2026-03-01T12:00:61Z",
                             "2026-03-01T12:00:00.Z",
                             "2026-03-01T12:00:00.123",
                             "2026-03-01T12:00:00,123Z",
                             "2026-03-01T12:00:00.12a",
                             "2026-03-01T12:00:00+",
                             "2026-03-01T12:00:00+25:00",
                             "2026-03-01T12:00:00+09:60",
                             "2026-03-01T12:00:00+9:00",
                             "2026-03-01T12:00:00ZZ",
                             "2026-03-01T12:00:00Z ",
                             " 2026-03-01T12:00:00Z",
                             "2026-03-01T12:00:00Z\n",
                             "2026-03-01T12:00:00 Z",
                             "2026-03-01T12:00:00 UTC",
                             "2026/03/01T12:00:00Z",
                             "20260301T120000Z",
                             "1772366400",
                             "٢٠٢٦-03-01T12:00:00Z"})
        EXPECT_EQ(RelativeTime::date(text), std::nullopt) << text;
    EXPECT_EQ(RelativeTime::date(std::string("2026-03-01T12:00:00Z\0", 21)), std::nullopt);
    EXPECT_EQ(RelativeTime::date("2026-03-01T12:00:00" + std::string(1 << 20, '0')), std::nullopt);
}

TEST(RelativeTime, VeryManyFractionalDigitsAreReadAndDropped)
{
    EXPECT_EQ(RelativeTime::date("2026-03-01T12:00:00." + std::string(1 << 20, '9') + "Z"), noon + 999999us);
}

TEST(RelativeTime, AgesInWords)
{
    const std::pair<Instant::duration, const char*> rows[] = {
        {0s, "0s ago"},
        {999ms, "0s ago"},
        {42s, "42s ago"},
        {59900ms, "59s ago"},
        {60s, "1m 0s ago"},
        {303s, "5m 3s ago"},
        {3599s, "59m 59s ago"},
        {3599999ms, "59m 59s ago"},
        {3600s, "1h 0m ago"},
        {2h + 5min + 59s, "2h 5m ago"},
        {24h, "24h 0m ago"},
        {50h, "50h 0m ago"},
        {-1us, ""},
        {-10s, ""},
    };
    const std::optional<Text> from = "2026-03-01T12:00:00Z";
    for (const auto& [age, expected] : rows)
        EXPECT_EQ(RelativeTime::ageAgo(from, noon + age), expected) << age.count();
}

TEST(RelativeTime, NoReadableTimeHasNoAge)
{
    for (const std::optional<Text>& from : {std::optional<Text>(), std::optional<Text>(""), std::optional<Text>("soon"),
                                            std::optional<Text>("2026-03-01")})
        EXPECT_EQ(RelativeTime::ageAgo(from, noon), "") << from.value_or("none").utf8();
}

TEST(RelativeTime, AnInstantIsWrittenInTheFormThatIsReadFirst)
{
    EXPECT_EQ(RelativeTime::isoText(noon), "2026-03-01T12:00:00.000Z");
    EXPECT_EQ(RelativeTime::isoText(noon + 120999us), "2026-03-01T12:00:00.120Z");
    EXPECT_EQ(RelativeTime::isoText(Instant() - 1ms), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(RelativeTime::date(RelativeTime::isoText(noon + 120ms)), noon + 120ms);
}

}  // namespace
}  // namespace quenchly
