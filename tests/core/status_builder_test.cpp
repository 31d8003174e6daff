#include "status_builder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "l10n.h"
#include "observe_only.h"
#include "test_files.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;
using QuenchStatusBuilder::isStale;
using QuenchStatusBuilder::resolveBarTint;
using testing::ScratchFolder;

namespace fs = std::filesystem;

const Instant noon = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + 12h;
const std::optional<Text> fresh = "2026-03-01T11:59:18Z";
const std::optional<Text> old = "2026-03-01T11:00:00Z";

constexpr const char* protectionOff = "Protection Off. No easing, even under overload.";
constexpr const char* waiting = "Checking in a moment.";
constexpr const char* cadence = "Checks about every minute.";
constexpr const char* easedBack = "AI is eased back. The machine is not fighting the AI for CPU.";

class Builder : public ::testing::Test {
protected:
    void SetUp() override { L10n::testingLanguage = AppLanguage::en; }
    void TearDown() override { L10n::testingLanguage = std::nullopt; }

    void installAgent(const std::string& content = "<plist/>")
    {
        scratch.write(fs::path("agents") / ObserveOnly::agentPlistName, content);
    }
    void removeAgent() { fs::remove(scratch / "agents" / ObserveOnly::agentPlistName); }
    void switchOff() { scratch.write("home/state/managed.json", R"({"disabledAt":"2026-03-01T11:00:00Z"})"); }
    void switchOn() { fs::remove(scratch / "home/state/managed.json"); }

    QuenchStatus build(const std::optional<HeatState>& state)
    {
        const fs::path dataHome = scratch / "home";
        const std::optional<fs::path> agents = scratch / "agents";
        return QuenchStatusBuilder::build(
            {.state = state, .dataHome = dataHome, .launchAgentsDir = agents, .now = noon});
    }

    ScratchFolder scratch;
};

const LastMetrics calmMetrics{.load1 = 1.6, .cpuCount = 8, .cpuLoadPct = 20, .menubarLine = "load 20% · swap n/a"};
const LastMetrics criticalMetrics{
    .load1 = 1.6, .cpuCount = 8, .cpuLoadPct = 20, .swapCritical = true, .menubarLine = "load 20% · swap 95%"};

TEST_F(Builder, TheSituationIsPickedInOrder)
{
    const HeatState freshState{.lastCheck = fresh, .slowActive = true};
    const HeatState oldState{.lastCheck = old, .slowActive = true};
    const struct {
        const char* situation;
        bool installed;
        bool off;
        bool dry;
        std::optional<HeatState> state;
        QuenchIcon icon;
        QuenchBarTint tint;
        const char* headline;
        std::optional<QuenchTone> tone;
        bool observeOnly;
        bool slowActive;
    } rows[] = {
        {"not set up, no state",
         false,
         false,
         false,
         {},
         QuenchIcon::stale,
         QuenchBarTint::waiting,
         "Checks not set up",
         {},
         true,
         false},
        {"not set up, stale",
         false,
         false,
         false,
         oldState,
         QuenchIcon::stale,
         QuenchBarTint::waiting,
         "Checks not set up",
         {},
         true,
         true},
        {"not set up, fresh",
         false,
         false,
         false,
         freshState,
         QuenchIcon::stale,
         QuenchBarTint::waiting,
         "Checks not set up",
         {},
         true,
         true},
        {"no state, off",
         true,
         true,
         false,
         {},
         QuenchIcon::stale,
         QuenchBarTint::unprotected,
         protectionOff,
         {},
         true,
         false},
        {"no state, off, no agent",
         false,
         true,
         false,
         {},
         QuenchIcon::stale,
         QuenchBarTint::unprotected,
         protectionOff,
         {},
         true,
         false},
        {"no state", true, false, false, {}, QuenchIcon::stale, QuenchBarTint::waiting, waiting, {}, false, false},
        {"no state, dry run",
         true,
         false,
         true,
         {},
         QuenchIcon::stale,
         QuenchBarTint::waiting,
         waiting,
         {},
         true,
         false},
        {"stale, off",
         true,
         true,
         false,
         oldState,
         QuenchIcon::stale,
         QuenchBarTint::unprotected,
         protectionOff,
         {},
         true,
         false},
        {"stale, off, no agent",
         false,
         true,
         false,
         oldState,
         QuenchIcon::stale,
         QuenchBarTint::unprotected,
         protectionOff,
         {},
         true,
         false},
        {"stale", true, false, false, oldState, QuenchIcon::stale, QuenchBarTint::stale, waiting, {}, false, false},
        {"stale, dry run",
         true,
         false,
         true,
         oldState,
         QuenchIcon::stale,
         QuenchBarTint::stale,
         waiting,
         {},
         true,
         false},
        {"fresh, off", true, true, false, freshState, QuenchIcon::watch, QuenchBarTint::unprotected, protectionOff,
         QuenchTone::watch, true, false},
        {"fresh, off, no agent", false, true, false, freshState, QuenchIcon::watch, QuenchBarTint::unprotected,
         protectionOff, QuenchTone::watch, true, false},
        {"fresh", true, false, false, freshState, QuenchIcon::protect, QuenchBarTint::protect, easedBack,
         QuenchTone::protect, false, true},
        {"fresh, dry run", true, false, true, freshState, QuenchIcon::protect, QuenchBarTint::protect, easedBack,
         QuenchTone::protect, true, true},
    };
    const std::map<std::string, std::string> details{
        {"Checks not set up", L10n::t("help_checks_not_set_up")},
        {protectionOff, protectionOff},
        {waiting, cadence},
        {easedBack, easedBack},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.situation);
        row.installed ? installAgent(row.dry ? "--dry-run" : "<plist/>") : removeAgent();
        row.off ? switchOff() : switchOn();
        const QuenchStatus status = build(row.state);
        EXPECT_EQ(status.icon, row.icon);
        EXPECT_EQ(status.barTint, row.tint);
        EXPECT_EQ(status.headline, row.headline);
        EXPECT_EQ(status.tone, row.tone);
        EXPECT_EQ(status.observeOnly, row.observeOnly);
        EXPECT_EQ(status.managementDisabled, row.off);
        EXPECT_EQ(status.slowActive, row.slowActive);
        EXPECT_EQ(status.agentInstalled, row.installed);
        EXPECT_EQ(status.detail, details.at(row.headline));
    }
}

TEST_F(Builder, AStateIsCopiedInEverySituation)
{
    const QuarantinedEntry shown{.id = "q", .cmd = "ollama", .quarantinedAt = "2026-03-01T11:00:00Z"};
    const QuarantinedEntry hidden{.id = "r", .cmd = "vim", .quarantinedAt = "2026-03-01T11:00:00Z"};
    const HeatState state{.lastCheck = fresh,
                          .hot = true,
                          .paused = {{.label = "A", .pid = 1}, {.label = "B"}},
                          .quarantined = {hidden, shown},
                          .lastMetrics = criticalMetrics,
                          .memoryReliefTip = "tip"};
    for (const bool installed : {false, true}) {
        for (const bool off : {false, true}) {
            for (const bool stale : {false, true}) {
                SCOPED_TRACE(std::to_string(installed) + std::to_string(off) + std::to_string(stale));
                installed ? installAgent() : removeAgent();
                off ? switchOff() : switchOn();
                HeatState given = state;
                given.lastCheck = stale ? old : fresh;
                const QuenchStatus status = build(given);
                EXPECT_EQ(status.lastCheckISO, given.lastCheck);
                EXPECT_EQ(status.lastCheckAge, stale ? "1h 0m ago" : "42s ago");
                EXPECT_EQ(status.pausedTargets, state.paused);
                EXPECT_EQ(status.quarantine, std::vector{shown});
                EXPECT_EQ(status.metricsLine, "load 20% · swap 95%");
                EXPECT_EQ(status.lastMetrics, criticalMetrics);
                EXPECT_TRUE(status.swapCritical);
                EXPECT_TRUE(status.stillOverloaded);
                EXPECT_EQ(status.memoryReliefTip, "tip");
            }
        }
    }
}

TEST_F(Builder, WithoutAStateNothingIsCopied)
{
    for (const bool off : {false, true}) {
        off ? switchOff() : switchOn();
        const QuenchStatus status = build(std::nullopt);
        EXPECT_EQ(status.lastCheckISO, std::nullopt);
        EXPECT_EQ(status.lastCheckAge, "");
        EXPECT_TRUE(status.pausedTargets.empty());
        EXPECT_TRUE(status.quarantine.empty());
        EXPECT_EQ(status.metricsLine, std::nullopt);
        EXPECT_EQ(status.lastMetrics, std::nullopt);
        EXPECT_FALSE(status.swapCritical);
        EXPECT_FALSE(status.stillOverloaded);
        EXPECT_EQ(status.memoryReliefTip, std::nullopt);
    }
}

TEST_F(Builder, AnEmptyStateIsStaleWhereNoStateWaits)
{
    installAgent();
    EXPECT_EQ(build(HeatState()).barTint, QuenchBarTint::stale);
    EXPECT_EQ(build(std::nullopt).barTint, QuenchBarTint::waiting);
    QuenchStatus empty = build(HeatState());
    empty.barTint = QuenchBarTint::waiting;
    EXPECT_EQ(empty, build(std::nullopt));
}

TEST_F(Builder, TheDetailIsTheFirstSentenceThatFits)
{
    const PausedEntry held{.label = "A"};
    const struct {
        const char* condition;
        HeatState state;
        bool observeOnly;
        const char* sentence;
    } rows[] = {
        {"hot, observing", {.hot = true}, true, "Watching. AI keeps running in this mode."},
        {"hot, observing, slowed, held",
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics, .slowActive = true},
         true,
         "Watching. AI keeps running in this mode."},
        {"slowed, swap critical",
         {.lastMetrics = criticalMetrics, .slowActive = true},
         false,
         "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is "
         "progressing."},
        {"slowed, swap critical, hot, held",
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics, .slowActive = true},
         false,
         "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is "
         "progressing."},
        {"slowed", {.slowActive = true}, false, easedBack},
        {"slowed, observing, not hot", {.slowActive = true}, true, easedBack},
        {"slowed, false heat", {.thermalTruth = "false-heat", .slowActive = true}, false, easedBack},
        {"hot, none held", {.hot = true}, false, "High load. Watching."},
        {"hot, none held, swap critical", {.hot = true, .lastMetrics = criticalMetrics}, false, "High load. Watching."},
        {"hot, held, swap critical",
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics},
         false,
         "Using extra memory on disk. Work is progressing."},
        {"hot, held",
         {.hot = true, .paused = {held}},
         false,
         "Holding until pressure drops. The machine is not fighting the AI for CPU."},
        {"false heat, none held",
         {.thermalTruth = "false-heat"},
         false,
         "Using extra memory on disk. AI keeps running."},
        {"false heat, none held, restored once",
         {.thermalTruth = "false-heat", .lastRestoreAt = "t"},
         false,
         "Using extra memory on disk. AI keeps running."},
        {"restored once, none held", {.lastRestoreAt = "t"}, false, "Your AI continued where it left off."},
        {"calm", {}, false, "Machine is calm. AI keeps running as usual."},
        {"calm, observing", {}, true, "Machine is calm. AI keeps running as usual."},
        {"calm, swap critical", {.lastMetrics = criticalMetrics}, false, "Machine is calm. AI keeps running as usual."},
        {"held, swap critical",
         {.paused = {held}, .lastMetrics = criticalMetrics},
         false,
         "Using extra memory on disk. Work is progressing."},
        {"held", {.coolStreak = 3, .paused = {held}}, false, "Safety checking. 3 of 5 safe."},
        {"held, false heat",
         {.thermalTruth = "false-heat", .coolStreak = 0, .paused = {held}},
         false,
         "Safety checking. 0 of 5 safe."},
        {"held, restored once",
         {.coolStreak = 12, .lastRestoreAt = "t", .paused = {held}},
         false,
         "Safety checking. 12 of 5 safe."},
        {"held, a negative streak", {.coolStreak = -1, .paused = {held}}, false, "Safety checking. -1 of 5 safe."},
    };
    for (const auto& row : rows) {
        installAgent(row.observeOnly ? "--dry-run" : "<plist/>");
        HeatState state = row.state;
        state.lastCheck = fresh;
        const std::string line = state.lastMetrics ? state.lastMetrics->menubarLine.utf8() + ". " : std::string();
        EXPECT_EQ(build(state).detail, line + row.sentence) << row.condition;
    }
}

TEST_F(Builder, TheHeadlineIsTheStoryOfTheState)
{
    const PausedEntry held{.label = "A"};
    const struct {
        const char* condition;
        HeatState state;
        bool observeOnly;
        const char* headline;
        QuenchTone tone;
        QuenchIcon icon;
        QuenchBarTint tint;
    } rows[] = {
        {"hot, none held",
         {.hot = true},
         false,
         "Overload. Watching.",
         QuenchTone::watch,
         QuenchIcon::watch,
         QuenchBarTint::hotWatch},
        {"hot, observing",
         {.hot = true},
         true,
         "Watching. AI keeps running.",
         QuenchTone::watch,
         QuenchIcon::watch,
         QuenchBarTint::watch},
        {"hot, observing, held",
         {.hot = true, .paused = {held}},
         true,
         "Watching. AI keeps running.",
         QuenchTone::watch,
         QuenchIcon::protect,
         QuenchBarTint::protect},
        {"hot, held",
         {.hot = true, .paused = {held}},
         false,
         "Holding until pressure drops. The machine is not fighting the AI for CPU.",
         QuenchTone::protect,
         QuenchIcon::protect,
         QuenchBarTint::protect},
        {"hot, held, swap critical",
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics},
         false,
         "Using extra memory on disk. Work is progressing.",
         QuenchTone::protect,
         QuenchIcon::protect,
         QuenchBarTint::protect},
        {"slowed",
         {.slowActive = true},
         false,
         easedBack,
         QuenchTone::protect,
         QuenchIcon::protect,
         QuenchBarTint::protect},
        {"false heat",
         {.thermalTruth = "false-heat"},
         false,
         "Using extra memory on disk. Work is progressing.",
         QuenchTone::watch,
         QuenchIcon::watch,
         QuenchBarTint::falseHeat},
        {"false heat, slowed",
         {.thermalTruth = "false-heat", .slowActive = true},
         false,
         "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is "
         "progressing.",
         QuenchTone::protect,
         QuenchIcon::protect,
         QuenchBarTint::protect},
        {"restored once",
         {.lastRestoreAt = "t"},
         false,
         "Calm streak. AI continued where it left off.",
         QuenchTone::cool,
         QuenchIcon::cool,
         QuenchBarTint::cool},
        {"calm",
         {},
         false,
         "Machine is calm. AI keeps running as usual.",
         QuenchTone::cool,
         QuenchIcon::cool,
         QuenchBarTint::cool},
        {"held after the heat",
         {.coolStreak = 3, .paused = {held, held}},
         false,
         "Holding until pressure drops. Memory stays; full speed returns when safe.",
         QuenchTone::protect,
         QuenchIcon::protect,
         QuenchBarTint::protect},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.condition);
        installAgent(row.observeOnly ? "--dry-run" : "<plist/>");
        HeatState state = row.state;
        state.lastCheck = fresh;
        const QuenchStatus status = build(state);
        EXPECT_EQ(status.headline, row.headline);
        EXPECT_EQ(status.tone, row.tone);
        EXPECT_EQ(status.icon, row.icon);
        EXPECT_EQ(status.barTint, row.tint);
    }
}

TEST_F(Builder, TheCheckersOwnStoryWinsOnlyWhileNothingIsGoingOn)
{
    const PausedEntry held{.label = "A"};
    const VerdictStory own{"The checker's own words.", QuenchTone::watch};
    const struct {
        const char* condition;
        HeatState state;
        bool wins;
    } rows[] = {
        {"calm", {}, true},
        {"calm, with metrics", {.lastMetrics = calmMetrics}, true},
        {"calm, restored once", {.lastRestoreAt = "t"}, true},
        {"false heat", {.thermalTruth = "false-heat"}, true},
        {"held", {.paused = {held}}, false},
        {"slowed", {.slowActive = true}, false},
        {"swap critical", {.lastMetrics = criticalMetrics}, false},
        {"hot", {.hot = true}, false},
    };
    installAgent();
    for (const auto& row : rows) {
        HeatState state = row.state;
        state.lastCheck = fresh;
        const QuenchStatus without = build(state);
        state.story = own;
        const QuenchStatus with = build(state);
        EXPECT_EQ(with.headline, row.wins ? own.text : without.headline) << row.condition;
        EXPECT_EQ(with.tone, row.wins ? own.tone : without.tone) << row.condition;
        EXPECT_EQ(with.detail, without.detail) << row.condition;
    }
}

TEST_F(Builder, TheToneOfTheCheckersOwnStoryPicksTheIcon)
{
    installAgent();
    const std::pair<QuenchTone, QuenchIcon> rows[] = {{QuenchTone::cool, QuenchIcon::cool},
                                                      {QuenchTone::protect, QuenchIcon::protect},
                                                      {QuenchTone::watch, QuenchIcon::watch}};
    for (const auto& [tone, icon] : rows) {
        const QuenchStatus status = build(HeatState{.lastCheck = fresh, .story = VerdictStory{"", tone}});
        EXPECT_EQ(status.headline, "");
        EXPECT_EQ(status.icon, icon);
        EXPECT_EQ(rawValue(status.barTint), rawValue(icon));
    }
}

TEST_F(Builder, ATrendUnderACalmStoryColoursTheGlyphOnly)
{
    installAgent();
    const QuenchStatus status = build(HeatState{.lastCheck = fresh,
                                                .story = VerdictStory{"All quiet.", QuenchTone::cool},
                                                .spectrumClass = SpectrumClass::trend});
    EXPECT_EQ(status.headline, "All quiet.");
    EXPECT_EQ(status.icon, QuenchIcon::cool);
    EXPECT_EQ(status.barTint, QuenchBarTint::spectrumTrend);
}

TEST_F(Builder, TheTextsOfTheWaitingSituationsFollowTheLanguage)
{
    L10n::testingLanguage = AppLanguage::ja;
    EXPECT_EQ(build(std::nullopt).headline, "チェック未設定");
    installAgent();
    EXPECT_EQ(build(std::nullopt).headline, "まもなくチェックします。");
    EXPECT_EQ(build(std::nullopt).detail, "約1分ごとにチェック.");
    switchOff();
    EXPECT_EQ(build(std::nullopt).headline, protectionOff);
}

TEST(StatusStaleness, AStateIsStaleStrictlyAfterTwoMinutes)
{
    EXPECT_EQ(QuenchStatusBuilder::staleAfterSeconds, 120.0);
    const std::pair<std::optional<Text>, bool> rows[] = {
        {"2026-03-01T12:00:00Z", false},
        {"2026-03-01T11:58:00Z", false},
        {"2026-03-01T11:58:00", false},
        {"2026-03-01T11:57:59.999Z", true},
        {"2026-03-01T11:57:59Z", true},
        {"2026-03-01T12:00:01Z", false},
        {"2036-03-01T12:00:00Z", false},
        {"2026-03-01T21:00:00+09:00", false},
        {std::nullopt, true},
        {"", true},
        {"soon", true},
        {"2026-03-01", true},
    };
    for (const auto& [lastCheck, expected] : rows)
        EXPECT_EQ(isStale(HeatState{.lastCheck = lastCheck}, noon), expected) << lastCheck.value_or("none").utf8();
}

TEST(StatusTint, TheFirstRuleThatFitsWins)
{
    const PausedEntry held{.label = "A"};
    const auto loop = SpectrumClass::loop;
    const struct {
        const char* condition;
        HeatState state;
        QuenchIcon icon;
        bool observeOnly;
        QuenchBarTint expected;
    } rows[] = {
        {"held",
         {.hot = true, .paused = {held}, .spectrumClass = loop},
         QuenchIcon::cool,
         true,
         QuenchBarTint::protect},
        {"slowed",
         {.thermalTruth = "false-heat", .hot = true, .slowActive = true},
         QuenchIcon::watch,
         false,
         QuenchBarTint::protect},
        {"hot, observing",
         {.thermalTruth = "false-heat", .hot = true, .spectrumClass = loop},
         QuenchIcon::cool,
         true,
         QuenchBarTint::watch},
        {"hot",
         {.thermalTruth = "false-heat", .hot = true, .spectrumClass = loop},
         QuenchIcon::cool,
         false,
         QuenchBarTint::hotWatch},
        {"false heat",
         {.thermalTruth = "false-heat", .spectrumClass = loop},
         QuenchIcon::cool,
         false,
         QuenchBarTint::falseHeat},
        {"false heat, observing", {.thermalTruth = "false-heat"}, QuenchIcon::watch, true, QuenchBarTint::falseHeat},
        {"false heat in other letters", {.thermalTruth = "FALSE-HEAT"}, QuenchIcon::watch, false, QuenchBarTint::watch},
        {"loop", {.spectrumClass = loop}, QuenchIcon::watch, false, QuenchBarTint::spectrumLoop},
        {"trend", {.spectrumClass = SpectrumClass::trend}, QuenchIcon::watch, false, QuenchBarTint::spectrumTrend},
        {"flat", {.spectrumClass = SpectrumClass::flat}, QuenchIcon::watch, true, QuenchBarTint::spectrumFlat},
        {"insufficient",
         {.spectrumClass = SpectrumClass::insufficient},
         QuenchIcon::watch,
         false,
         QuenchBarTint::spectrumInsufficient},
        {"icon cool", {}, QuenchIcon::cool, false, QuenchBarTint::cool},
        {"icon protect", {}, QuenchIcon::protect, false, QuenchBarTint::protect},
        {"icon watch", {}, QuenchIcon::watch, true, QuenchBarTint::watch},
        {"icon stale", {}, QuenchIcon::stale, false, QuenchBarTint::stale},
    };
    for (const auto& row : rows)
        EXPECT_EQ(resolveBarTint({.state = row.state, .icon = row.icon, .observeOnly = row.observeOnly}), row.expected)
            << row.condition;
}

TEST(StatusEnumerations, RawTextsAreTheCaseNames)
{
    const std::pair<QuenchIcon, std::string_view> icons[] = {{QuenchIcon::cool, "cool"},
                                                             {QuenchIcon::protect, "protect"},
                                                             {QuenchIcon::watch, "watch"},
                                                             {QuenchIcon::stale, "stale"}};
    for (const auto& [icon, text] : icons) {
        EXPECT_EQ(rawValue(icon), text);
        EXPECT_EQ(fromRawValue<QuenchIcon>(text), icon);
    }
    const std::pair<QuenchBarTint, std::string_view> tints[] = {
        {QuenchBarTint::cool, "cool"},
        {QuenchBarTint::protect, "protect"},
        {QuenchBarTint::hotWatch, "hotWatch"},
        {QuenchBarTint::falseHeat, "falseHeat"},
        {QuenchBarTint::watch, "watch"},
        {QuenchBarTint::unprotected, "unprotected"},
        {QuenchBarTint::stale, "stale"},
        {QuenchBarTint::waiting, "waiting"},
        {QuenchBarTint::spectrumLoop, "spectrumLoop"},
        {QuenchBarTint::spectrumTrend, "spectrumTrend"},
        {QuenchBarTint::spectrumFlat, "spectrumFlat"},
        {QuenchBarTint::spectrumInsufficient, "spectrumInsufficient"},
    };
    for (const auto& [tint, text] : tints) {
        EXPECT_EQ(rawValue(tint), text);
        EXPECT_EQ(fromRawValue<QuenchBarTint>(text), tint);
    }
    EXPECT_EQ(fromRawValue<QuenchBarTint>("HotWatch"), std::nullopt);
}

TEST(StatusEquality, StatusesDifferInEachFieldAlone)
{
    const QuenchStatus base;
    const QuenchStatus others[] = {
        {.icon = QuenchIcon::cool},
        {.barTint = QuenchBarTint::cool},
        {.headline = "h"},
        {.detail = "d"},
        {.lastCheckISO = ""},
        {.lastCheckAge = "1s ago"},
        {.pausedTargets = {{.label = "A"}}},
        {.quarantine = {{.id = "A"}}},
        {.tone = QuenchTone::cool},
        {.observeOnly = true},
        {.managementDisabled = true},
        {.metricsLine = ""},
        {.lastMetrics = LastMetrics{}},
        {.swapCritical = true},
        {.stillOverloaded = true},
        {.slowActive = true},
        {.agentInstalled = true},
        {.memoryReliefTip = ""},
    };
    EXPECT_EQ(std::size(others), 18u);
    for (std::size_t i = 0; i < std::size(others); ++i) {
        EXPECT_NE(others[i], base) << i;
        EXPECT_EQ(others[i], QuenchStatus(others[i])) << i;
    }
}

}  // namespace
}  // namespace quenchly
