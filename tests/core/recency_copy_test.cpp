#include "recency_copy.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "noon.h"
#include "shown_language.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace RecencyCopy;
using namespace std::chrono_literals;
using testing::noon;

using RecencyTexts = testing::InEnglish;

TEST(Recency, TheAgeIsInSecondsAndNeverNegative)
{
    const std::optional<Text> iso = "2026-03-01T12:00:00Z";
    EXPECT_EQ(ageSeconds(iso, noon), 0.0);
    EXPECT_EQ(ageSeconds(iso, noon + 90500ms), 90.5);
    EXPECT_EQ(ageSeconds(iso, noon + 48h), 172800.0);
    EXPECT_EQ(ageSeconds(iso, noon - 1us), std::nullopt);
    EXPECT_EQ(ageSeconds(std::nullopt, noon), std::nullopt);
    EXPECT_EQ(ageSeconds(Text(""), noon), std::nullopt);
    EXPECT_EQ(ageSeconds(Text("soon"), noon), std::nullopt);
}

TEST(Recency, ACheckIsOverdueStrictlyAfterNinetySeconds)
{
    EXPECT_EQ(overdueAfterSeconds, 90.0);
    EXPECT_FALSE(isOverdue(0, false));
    EXPECT_FALSE(isOverdue(90, false));
    EXPECT_TRUE(isOverdue(90.000001, false));
    EXPECT_TRUE(isOverdue(90.5, false));
    EXPECT_TRUE(isOverdue(std::nullopt, false));
    EXPECT_TRUE(isOverdue(0, true));
    EXPECT_TRUE(isOverdue(std::nullopt, true));
}

TEST_F(RecencyTexts, BothLinesMakeTheSameChoice)
{
    const struct {
        const char* condition;
        ExtraLine facts;
        std::optional<std::string> expected;
    } rows[] = {
        {"in flight", {.ageSeconds = 30, .iconStale = false, .inFlight = true}, "Checking now"},
        {"in flight beats stale", {.ageSeconds = 30, .iconStale = true, .inFlight = true}, "Checking now"},
        {"in flight beats an unknown age", {.ageSeconds = {}, .iconStale = true, .inFlight = true}, "Checking now"},
        {"stale", {.ageSeconds = 30, .iconStale = true, .inFlight = false}, "Checking in a moment."},
        {"unknown age", {.ageSeconds = {}, .iconStale = false, .inFlight = false}, "Checking in a moment."},
        {"older than 90", {.ageSeconds = 90.5, .iconStale = false, .inFlight = false}, "Checking in a moment."},
        {"exactly 90", {.ageSeconds = 90, .iconStale = false, .inFlight = false}, std::nullopt},
        {"fresh", {.ageSeconds = 30, .iconStale = false, .inFlight = false}, std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(extraLine(row.facts), row.expected) << row.condition;
        for (const char* age : {"", "30s ago", "5h 0m ago"})
            EXPECT_EQ(dropdownLine({.age = age,
                                    .ageSeconds = row.facts.ageSeconds,
                                    .iconStale = row.facts.iconStale,
                                    .inFlight = row.facts.inFlight}),
                      row.expected)
                << row.condition << " " << age;
    }
}

TEST_F(RecencyTexts, TheLinesFollowTheLanguage)
{
    EXPECT_EQ(checkingNow(), "Checking now");
    EXPECT_EQ(checkingInAMoment(), "Checking in a moment.");
    EXPECT_EQ(cadenceQuiet(), "Checks about every minute");
    L10n::testingLanguage = AppLanguage::ko;
    EXPECT_EQ(checkingNow(), "검사 중");
    EXPECT_EQ(checkingInAMoment(), "곧 검사합니다.");
    EXPECT_EQ(cadenceQuiet(), "약 1분마다 검사");
}

}  // namespace
}  // namespace quenchly
