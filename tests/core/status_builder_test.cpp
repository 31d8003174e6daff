#include "status_builder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "noon.h"
#include "observe_only.h"
#include "relative_time.h"
#include "shown_language.h"
#include "status_json.h"
#include "test_files.h"

namespace quenchly {
namespace {

using QuenchStatusBuilder::isStale;
using QuenchStatusBuilder::resolveBarTint;
using testing::noon;
using testing::ScratchFolder;

namespace fs = std::filesystem;

const std::optional<Text> fresh = "2026-03-01T11:59:18Z";
const std::optional<Text> old = "2026-03-01T11:00:00Z";

constexpr const char* protectionOff = "Protection Off. No easing, even under overload.";
constexpr const char* onDisk = "Using extra memory on disk. Work is progressing.";
constexpr const char* calm = "Machine is calm. AI keeps running as usual.";
constexpr const char* easedBack = "AI is eased back. The machine is not fighting the AI for CPU.";
constexpr const char* easedBackOnDisk =
    "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is progressing.";
constexpr const char* holding = "Holding until pressure drops. The machine is not fighting the AI for CPU.";

struct Installation {
    bool agentInstalled = true;
    bool dryRun = false;
    bool protectionOff = false;
};

class Builder : public testing::InEnglish {
protected:
    void install(const Installation& given = {})
    {
        fs::remove_all(scratch / "agents");
        fs::remove_all(scratch / "home");
        if (given.agentInstalled)
            scratch.write(fs::path("agents") / ObserveOnly::agentPlistName, given.dryRun ? "--dry-run" : "<plist/>");
        if (given.protectionOff)
            scratch.write("home/state/managed.json", R"({"disabledAt":"2026-03-01T11:00:00Z"})");
    }

    QuenchStatus build(const std::optional<HeatState>& state)
    {
        return QuenchStatusBuilder::build(state, {.dataHome = scratch / "home", .launchAgentsDir = scratch / "agents"},
                                          noon);
    }

    ScratchFolder scratch;
};

const LastMetrics calmMetrics{.load1 = 1.6, .cpuCount = 8, .cpuLoadPct = 20, .menubarLine = "load 20% · swap n/a"};
const LastMetrics criticalMetrics{
    .load1 = 1.6, .cpuCount = 8, .cpuLoadPct = 20, .swapCritical = true, .menubarLine = "load 20% · swap 95%"};

QuenchStatus observing(QuenchStatus status)
{
    status.observeOnly = true;
    return status;
}

QuenchStatus slowed(QuenchStatus status)
{
    status.slowActive = true;
    return status;
}

TEST_F(Builder, TheSituationIsPickedInOrder)
{
    const Installation installed;
    const Installation absent{.agentInstalled = false};
    const Installation dryRun{.dryRun = true};
    const Installation off{.protectionOff = true};
    const Installation offAndAbsent{.agentInstalled = false, .protectionOff = true};

    const std::optional<HeatState> noState;
    const HeatState neverChecked{.slowActive = true};
    const HeatState staleState{.lastCheck = old, .slowActive = true};
    const HeatState freshState{.lastCheck = fresh, .slowActive = true};

    const QuenchStatus notSetUp{.icon = QuenchIcon::stale,
                                .barTint = QuenchBarTint::waiting,
                                .headline = "Checks not set up",
                                .detail = L10n::t("help_checks_not_set_up"),
                                .observeOnly = true};
    const QuenchStatus switchedOff{.icon = QuenchIcon::stale,
                                   .barTint = QuenchBarTint::unprotected,
                                   .headline = protectionOff,
                                   .detail = protectionOff,
                                   .observeOnly = true,
                                   .managementDisabled = true};
    const QuenchStatus switchedOffAndFresh{.icon = QuenchIcon::watch,
                                           .barTint = QuenchBarTint::unprotected,
                                           .headline = protectionOff,
                                           .detail = protectionOff,
                                           .tone = QuenchTone::watch,
                                           .observeOnly = true,
                                           .managementDisabled = true};
    const QuenchStatus waitingForAState{.icon = QuenchIcon::stale,
                                        .barTint = QuenchBarTint::waiting,
                                        .headline = "Checking in a moment.",
                                        .detail = "Checks about every minute."};
    const QuenchStatus stale{.icon = QuenchIcon::stale,
                             .barTint = QuenchBarTint::stale,
                             .headline = "Checking in a moment.",
                             .detail = "Checks about every minute."};
    const QuenchStatus eased{.icon = QuenchIcon::protect,
                             .barTint = QuenchBarTint::protect,
                             .headline = easedBack,
                             .detail = easedBack,
                             .tone = QuenchTone::protect,
                             .slowActive = true};
    const struct {
        const char* situation;
        Installation installation;
        std::optional<HeatState> state;
        QuenchStatus expected;
    } rows[] = {
        {"not set up, no state", absent, noState, notSetUp},
        {"not set up, stale", absent, staleState, slowed(notSetUp)},
        {"not set up, fresh", absent, freshState, slowed(notSetUp)},
        {"no state, off", off, noState, switchedOff},
        {"no state, off, no agent", offAndAbsent, noState, switchedOff},
        {"no state", installed, noState, waitingForAState},
        {"no state, dry run", dryRun, noState, observing(waitingForAState)},
        {"stale, off", off, staleState, switchedOff},
        {"stale, off, no agent", offAndAbsent, staleState, switchedOff},
        {"stale", installed, staleState, stale},
        {"stale, dry run", dryRun, staleState, observing(stale)},
        {"never checked", installed, neverChecked, stale},
        {"fresh, off", off, freshState, switchedOffAndFresh},
        {"fresh, off, no agent", offAndAbsent, freshState, switchedOffAndFresh},
        {"fresh", installed, freshState, eased},
        {"fresh, dry run", dryRun, freshState, observing(eased)},
    };
    for (const auto& row : rows) {
        install(row.installation);
        QuenchStatus expected = row.expected;
        expected.agentInstalled = row.installation.agentInstalled;
        if (row.state) {
            expected.lastCheckISO = row.state->lastCheck;
            expected.lastCheckAge = RelativeTime::ageAgo(row.state->lastCheck, noon);
        }
        EXPECT_EQ(statusJson(build(row.state)), statusJson(expected)) << row.situation;
    }
}

TEST_F(Builder, AStateIsCopiedInEverySituation)
{
    const QuarantinedEntry shown{.id = "q", .cmd = "ollama", .quarantinedAt = "2026-03-01T11:00:00Z"};
    const QuarantinedEntry hidden{.id = "r", .cmd = "vim", .quarantinedAt = "2026-03-01T11:00:00Z"};
    const std::pair<const char*, Installation> installations[] = {
        {"not set up", {.agentInstalled = false}},
        {"off, not set up", {.agentInstalled = false, .protectionOff = true}},
        {"off", {.protectionOff = true}},
        {"set up", {}},
    };
    for (const auto& [name, installation] : installations) {
        for (const bool stale : {false, true}) {
            SCOPED_TRACE(std::string(name) + (stale ? ", stale" : ", fresh"));
            install(installation);
            const HeatState state{.lastCheck = stale ? old : fresh,
                                  .hot = true,
                                  .paused = {{.label = "A", .pid = 1}, {.label = "B"}},
                                  .quarantined = {hidden, shown},
                                  .lastMetrics = criticalMetrics,
                                  .memoryReliefTip = "tip"};
            const QuenchStatus status = build(state);
            EXPECT_EQ(status.lastCheckISO, state.lastCheck);
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

TEST_F(Builder, TheDetailIsTheFirstSentenceThatFits)
{
    const PausedEntry held{.label = "A"};
    const Installation installed;
    const Installation observingOnly{.dryRun = true};
    const char* const watching = "Watching. AI keeps running in this mode.";
    const char* const keepsRunning = "Using extra memory on disk. AI keeps running.";
    const struct {
        const char* condition;
        Installation installation;
        HeatState state;
        const char* sentence;
    } rows[] = {
        {"hot, observing", observingOnly, {.hot = true}, watching},
        {"hot, observing, slowed, held",
         observingOnly,
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics, .slowActive = true},
         watching},
        {"slowed, swap critical", installed, {.lastMetrics = criticalMetrics, .slowActive = true}, easedBackOnDisk},
        {"slowed, swap critical, hot, held",
         installed,
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics, .slowActive = true},
         easedBackOnDisk},
        {"slowed", installed, {.slowActive = true}, easedBack},
        {"slowed, observing, not hot", observingOnly, {.slowActive = true}, easedBack},
        {"slowed, false heat", installed, {.thermalTruth = "false-heat", .slowActive = true}, easedBack},
        {"hot, none held", installed, {.hot = true}, "High load. Watching."},
        {"hot, none held, swap critical",
         installed,
         {.hot = true, .lastMetrics = criticalMetrics},
         "High load. Watching."},
        {"hot, held, swap critical",
         installed,
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics},
         onDisk},
        {"hot, held", installed, {.hot = true, .paused = {held}}, holding},
        {"false heat, none held", installed, {.thermalTruth = "false-heat"}, keepsRunning},
        {"false heat, none held, restored once",
         installed,
         {.thermalTruth = "false-heat", .lastRestoreAt = "t"},
         keepsRunning},
        {"restored once, none held", installed, {.lastRestoreAt = "t"}, "Your AI continued where it left off."},
        {"calm", installed, {}, calm},
        {"calm, observing", observingOnly, {}, calm},
        {"calm, swap critical", installed, {.lastMetrics = criticalMetrics}, calm},
        {"held, swap critical", installed, {.paused = {held}, .lastMetrics = criticalMetrics}, onDisk},
        {"held", installed, {.coolStreak = 3, .paused = {held}}, "Safety checking. 3 of 5 safe."},
        {"held, false heat",
         installed,
         {.thermalTruth = "false-heat", .coolStreak = 0, .paused = {held}},
         "Safety checking. 0 of 5 safe."},
        {"held, restored once",
         installed,
         {.coolStreak = 12, .lastRestoreAt = "t", .paused = {held}},
         "Safety checking. 12 of 5 safe."},
        {"held, a negative streak", installed, {.coolStreak = -1, .paused = {held}}, "Safety checking. -1 of 5 safe."},
        {"held, with metrics",
         installed,
         {.coolStreak = 3, .paused = {held, held}, .lastMetrics = calmMetrics},
         "Safety checking. 3 of 5 safe."},
    };
    for (const auto& row : rows) {
        install(row.installation);
        HeatState state = row.state;
        state.lastCheck = fresh;
        const std::string line = state.lastMetrics ? state.lastMetrics->menubarLine.utf8() + ". " : std::string();
        EXPECT_EQ(build(state).detail, line + row.sentence) << row.condition;
    }
}

TEST_F(Builder, TheHeadlineIsTheStoryOfTheState)
{
    using enum QuenchIcon;
    const PausedEntry held{.label = "A"};
    const Installation installed;
    const Installation observingOnly{.dryRun = true};
    struct Shown {
        const char* headline;
        QuenchTone tone;
        QuenchIcon icon;
        QuenchBarTint tint;
    };
    const auto protecting = [](const char* headline) {
        return Shown{headline, QuenchTone::protect, protect, QuenchBarTint::protect};
    };
    const struct {
        const char* condition;
        Installation installation;
        HeatState state;
        Shown shown;
    } rows[] = {
        {"hot, none held",
         installed,
         {.hot = true},
         {"Overload. Watching.", QuenchTone::watch, watch, QuenchBarTint::hotWatch}},
        {"hot, observing",
         observingOnly,
         {.hot = true},
         {"Watching. AI keeps running.", QuenchTone::watch, watch, QuenchBarTint::watch}},
        {"hot, observing, held",
         observingOnly,
         {.hot = true, .paused = {held}},
         {"Watching. AI keeps running.", QuenchTone::watch, protect, QuenchBarTint::protect}},
        {"hot, held", installed, {.hot = true, .paused = {held}}, protecting(holding)},
        {"hot, held, swap critical",
         installed,
         {.hot = true, .paused = {held}, .lastMetrics = criticalMetrics},
         protecting(onDisk)},
        {"slowed", installed, {.slowActive = true}, protecting(easedBack)},
        {"false heat",
         installed,
         {.thermalTruth = "false-heat"},
         {onDisk, QuenchTone::watch, watch, QuenchBarTint::falseHeat}},
        {"false heat, slowed",
         installed,
         {.thermalTruth = "false-heat", .slowActive = true},
         protecting(easedBackOnDisk)},
        {"restored once",
         installed,
         {.lastRestoreAt = "t"},
         {"Calm streak. AI continued where it left off.", QuenchTone::cool, cool, QuenchBarTint::cool}},
        {"calm", installed, {}, {calm, QuenchTone::cool, cool, QuenchBarTint::cool}},
        {"held after the heat",
         installed,
         {.coolStreak = 3, .paused = {held, held}},
         protecting("Holding until pressure drops. Memory stays; full speed returns when safe.")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.condition);
        install(row.installation);
        HeatState state = row.state;
        state.lastCheck = fresh;
        const QuenchStatus status = build(state);
        EXPECT_EQ(status.headline, row.shown.headline);
        EXPECT_EQ(status.tone, row.shown.tone);
        EXPECT_EQ(status.icon, row.shown.icon);
        EXPECT_EQ(status.barTint, row.shown.tint);
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
        {.condition = "calm", .state = {}, .wins = true},
        {.condition = "calm, with metrics", .state = {.lastMetrics = calmMetrics}, .wins = true},
        {.condition = "calm, restored once", .state = {.lastRestoreAt = "t"}, .wins = true},
        {.condition = "false heat", .state = {.thermalTruth = "false-heat"}, .wins = true},
        {.condition = "held", .state = {.paused = {held}}, .wins = false},
        {.condition = "slowed", .state = {.slowActive = true}, .wins = false},
        {.condition = "swap critical", .state = {.lastMetrics = criticalMetrics}, .wins = false},
        {.condition = "hot", .state = {.hot = true}, .wins = false},
    };
    install();
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
    install();
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
    install();
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
    install();
    EXPECT_EQ(build(std::nullopt).headline, "まもなくチェックします。");
    EXPECT_EQ(build(std::nullopt).detail, "約1分ごとにチェック.");
    install({.protectionOff = true});
    EXPECT_EQ(build(std::nullopt).headline, protectionOff);
}

TEST(StatusStaleness, AStateIsStaleStrictlyAfterTwoMinutes)
{
    EXPECT_EQ(QuenchStatusBuilder::staleAfterSeconds, 120.0);
    const struct {
        std::optional<Text> lastCheck;
        bool isStale;
    } rows[] = {
        {.lastCheck = "2026-03-01T12:00:00Z", .isStale = false},
        {.lastCheck = "2026-03-01T11:58:00Z", .isStale = false},
        {.lastCheck = "2026-03-01T11:58:00", .isStale = false},
        {.lastCheck = "2026-03-01T11:57:59.999Z", .isStale = true},
        {.lastCheck = "2026-03-01T11:57:59Z", .isStale = true},
        {.lastCheck = "2026-03-01T12:00:01Z", .isStale = false},
        {.lastCheck = "2036-03-01T12:00:00Z", .isStale = false},
        {.lastCheck = "2026-03-01T21:00:00+09:00", .isStale = false},
        {.lastCheck = std::nullopt, .isStale = true},
        {.lastCheck = "", .isStale = true},
        {.lastCheck = "soon", .isStale = true},
        {.lastCheck = "2026-03-01", .isStale = true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isStale(HeatState{.lastCheck = row.lastCheck}, noon), row.isStale)
            << row.lastCheck.value_or("none").utf8();
}

TEST(StatusTint, TheFirstRuleThatFitsWins)
{
    using enum QuenchBarTint;
    const PausedEntry held{.label = "A"};
    const auto loop = SpectrumClass::loop;
    const struct {
        const char* condition;
        HeatState state;
        QuenchIcon icon;
        QuenchBarTint tint;
        bool observeOnly = false;
    } rows[] = {
        {.condition = "held",
         .state = {.hot = true, .paused = {held}, .spectrumClass = loop},
         .icon = QuenchIcon::cool,
         .tint = protect,
         .observeOnly = true},
        {"slowed", {.thermalTruth = "false-heat", .hot = true, .slowActive = true}, QuenchIcon::watch, protect},
        {.condition = "hot, observing",
         .state = {.thermalTruth = "false-heat", .hot = true, .spectrumClass = loop},
         .icon = QuenchIcon::cool,
         .tint = watch,
         .observeOnly = true},
        {"hot", {.thermalTruth = "false-heat", .hot = true, .spectrumClass = loop}, QuenchIcon::cool, hotWatch},
        {"false heat", {.thermalTruth = "false-heat", .spectrumClass = loop}, QuenchIcon::cool, falseHeat},
        {.condition = "false heat, observing",
         .state = {.thermalTruth = "false-heat"},
         .icon = QuenchIcon::watch,
         .tint = falseHeat,
         .observeOnly = true},
        {"false heat in other letters", {.thermalTruth = "FALSE-HEAT"}, QuenchIcon::watch, watch},
        {"loop", {.spectrumClass = loop}, QuenchIcon::watch, spectrumLoop},
        {"trend", {.spectrumClass = SpectrumClass::trend}, QuenchIcon::watch, spectrumTrend},
        {.condition = "flat, observing",
         .state = {.spectrumClass = SpectrumClass::flat},
         .icon = QuenchIcon::watch,
         .tint = spectrumFlat,
         .observeOnly = true},
        {"insufficient", {.spectrumClass = SpectrumClass::insufficient}, QuenchIcon::watch, spectrumInsufficient},
        {"icon cool", {}, QuenchIcon::cool, cool},
        {"icon protect", {}, QuenchIcon::protect, protect},
        {.condition = "icon watch, observing",
         .state = {},
         .icon = QuenchIcon::watch,
         .tint = watch,
         .observeOnly = true},
        {"icon stale", {}, QuenchIcon::stale, stale},
    };
    for (const auto& row : rows)
        EXPECT_EQ(resolveBarTint(row.state, row.icon, row.observeOnly), row.tint) << row.condition;
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
