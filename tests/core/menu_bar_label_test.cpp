#include "menu_bar_label.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "noon.h"
#include "shown_language.h"
#include "test_files.h"

namespace quenchly {
namespace {

using testing::noon;

TEST(CompactStripMetrics, LinesBecomeShort)
{
    const std::pair<const char*, const char*> rows[] = {
        {"load 9.4 / 8 · swap 2.1 GB (31%)", "9.4 / 8 · 2.1G"},
        {"load 73% · swap 3.2 GB (45%)", "73% · 3.2G"},
        {"load 100% · swap 12 GB", "100% · 12G"},
        {"load 12% · swap 512 MB", "12% · 512M"},
        {"load 12% · swap 512 MB (3%)", "12% · 512M"},
        {"load 12% · swap 45%", "12% · 45%"},
        {"load 12% · swap n/a", "12% · n/a"},
        {"load 3.2", "3.2"},
        {"  load 3.2  ", "3.2"},
        {"3.2", "3.2"},
        {"load load 5", "5"},
        {"load 5 load 6", "5 6"},
        {"load", "load"},
        {"Load 5", "Load 5"},
        {"load 5·swap 6 GB", "5 · 6G"},
        {"load 5 · swap swap 6 GB 7 MB", "5 · 6G 7M"},
        {"load 5 · (31%)", "5 · "},
        {"load 5 · swap 2 (a) (b)", "5 · 2"},
        {"load 5 · swap 2 GBs", "5 · 2Gs"},
        {"load 5 · swap 2GB", "5 · 2GB"},
        {"load 1 · swap 2 · extra 3", "1 · 2 · extra 3"},
        {"swap 2 GB · load 5", "swap 2 GB · load 5"},
        {"load 5 ·", "5"},
        {"· swap 2 GB", "swap 2 GB"},
        {"·", "·"},
        {"", ""},
        {"load 5 (1.2 GB)", "5 (1.2 GB)"},
    };
    for (const auto& [line, expected] : rows)
        EXPECT_EQ(compactStripMetrics(line), expected) << line;
}

class Label : public testing::InEnglish {
protected:
    MenuBarLabel label(const QuenchStatus& status, bool inFlight = false)
    {
        return menuBarLabel(status, noon, inFlight);
    }

    const QuenchStatus calm{.icon = QuenchIcon::cool,
                            .lastCheckISO = "2026-03-01T11:59:30Z",
                            .metricsLine = "load 73% · swap 3.2 GB (45%)",
                            .agentInstalled = true};
};

TEST_F(Label, TheStatusWordIsTheFirstThatFits)
{
    const struct {
        const char* condition;
        QuenchStatus status;
        const char* word;
    } rows[] = {
        {"not installed", {.agentInstalled = false}, "Checks not set up"},
        {"not installed, off", {.managementDisabled = true, .agentInstalled = false}, "Checks not set up"},
        {"off", {.managementDisabled = true, .agentInstalled = true}, "Protection Off"},
        {"on", {.managementDisabled = false, .agentInstalled = true}, "On"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(label(row.status).statusWord, row.word) << row.condition;
}

TEST_F(Label, MetricsAreShownShortenedAndOnlyWhenThereAreAny)
{
    EXPECT_EQ(label(calm).metrics, "73% · 3.2G");
    EXPECT_EQ(label({.metricsLine = std::nullopt}).metrics, std::nullopt);
    EXPECT_EQ(label({.metricsLine = ""}).metrics, std::nullopt);
}

TEST_F(Label, MetricsFromAFileStayOneShortLine)
{
    EXPECT_EQ(label({.metricsLine = "load 1\n2\u202E · swap 3"}).metrics, "1 2 · 3");
    const auto metrics = label({.metricsLine = std::string(1 << 20, 'x')}).metrics;
    ASSERT_TRUE(metrics);
    EXPECT_LT(metrics->size(), 200u);
    EXPECT_TRUE(metrics->ends_with("…"));
}

TEST_F(Label, TheRecencyWordIsTheFirstThatFits)
{
    const struct {
        const char* condition;
        QuenchStatus status;
        std::optional<std::string> word;
        bool inFlight = false;
    } rows[] = {
        {.condition = "in flight",
         .status = {.icon = QuenchIcon::cool, .lastCheckISO = "2026-03-01T11:59:30Z"},
         .word = "Checking now",
         .inFlight = true},
        {.condition = "in flight beats stale",
         .status = {.icon = QuenchIcon::stale},
         .word = "Checking now",
         .inFlight = true},
        {"stale", {.icon = QuenchIcon::stale, .lastCheckISO = "2026-03-01T11:59:30Z"}, "Checking in a moment."},
        {"never checked", {.icon = QuenchIcon::cool}, "Checking in a moment."},
        {"an unreadable time", {.icon = QuenchIcon::cool, .lastCheckISO = "soon"}, "Checking in a moment."},
        {"in the future", {.icon = QuenchIcon::cool, .lastCheckISO = "2026-03-01T12:00:01Z"}, "Checking in a moment."},
        {"older than 90 seconds",
         {.icon = QuenchIcon::watch, .lastCheckISO = "2026-03-01T11:58:29.9Z"},
         "Checking in a moment."},
        {"90 seconds old", {.icon = QuenchIcon::watch, .lastCheckISO = "2026-03-01T11:58:30Z"}, std::nullopt},
        {"fresh", {.icon = QuenchIcon::protect, .lastCheckISO = "2026-03-01T11:59:30Z"}, std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(label(row.status, row.inFlight).recency, row.word) << row.condition;
}

TEST_F(Label, AllWordsMakeOneLine)
{
    EXPECT_EQ(label(calm).text(), "On  73% · 3.2G");
    EXPECT_EQ(label(calm, true).text(), "On  73% · 3.2G  Checking now");
    EXPECT_EQ(label({}).text(), "Checks not set up  Checking in a moment.");
}

TEST_F(Label, TheWordsFollowTheLanguage)
{
    L10n::testingLanguage = AppLanguage::ko;
    EXPECT_EQ(label(calm, true).text(), "켜짐  73% · 3.2G  검사 중");
}

}  // namespace
}  // namespace quenchly
