#include "menu_content.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "help_copy.h"
#include "menu_content_fixture.h"

namespace quenchly {
namespace {

using testing::allLanguages;
using testing::MenuContentTest;
using testing::setAsideProcess;

using State = TargetRow::State;

constexpr const char* noListedAiOpen = "No listed AI is open. Other AI is not eased.";
constexpr const char* overloadNoAi = "Overload. No listed AI to ease.";

/// The texts of the keys as paragraphs.
std::string paragraphs(const std::vector<std::string_view>& keys)
{
    std::string text;
    for (const std::string_view key : keys)
        text += (text.empty() ? "" : "\n\n") + MenuHelpCopy::paragraph(key);
    return text;
}

struct Installation {
    bool agentInstalled = true;
    bool protectionOff = false;
};

constexpr Installation protecting;
constexpr Installation switchedOff{.protectionOff = true};
constexpr Installation notInstalled{.agentInstalled = false};
constexpr Installation offAndNotInstalled{.agentInstalled = false, .protectionOff = true};

void install(QuenchStatus& status, const Installation& installation)
{
    status.agentInstalled = installation.agentInstalled;
    status.managementDisabled = installation.protectionOff;
}

std::vector<std::string> labels(const MenuContent::SetAside& setAside)
{
    std::vector<std::string> result;
    for (const MenuContent::SetAsideEntry& entry : setAside.entries)
        result.push_back(entry.label);
    return result;
}

// A reference would be bound to a temporary that is gone when the content is decided.
static_assert(!std::is_convertible_v<QuenchStatus, decltype(MenuSituation::status)>);
static_assert(!std::is_convertible_v<std::vector<TargetRow>, decltype(MenuSituation::targetRows)>);

TEST_F(MenuContentTest, TheHeaderCarriesTheStatussTintHeadlineAndDetail)
{
    EXPECT_EQ(content().header.tint, QuenchBarTint::cool);
    EXPECT_EQ(content().header.headline, "Machine is calm.");
    EXPECT_EQ(content().header.detail, "load 20% · swap n/a. Machine is calm.");
    status.barTint = QuenchBarTint::spectrumTrend;
    status.headline = "Overload. Watching.";
    status.detail = "High load. Watching.";
    EXPECT_EQ(content().header.tint, QuenchBarTint::spectrumTrend);
    EXPECT_EQ(content().header.headline, "Overload. Watching.");
    EXPECT_EQ(content().header.detail, "High load. Watching.");
    status.headline = "";
    status.detail = "";
    EXPECT_EQ(content().header.headline, "");
    EXPECT_EQ(content().header.detail, "");
}

TEST_F(MenuContentTest, SetAsideProcessesOfOneNameAreToldApartByTheirPortOrTheirOwnName)
{
    const auto distinctions = [this](std::vector<QuarantinedEntry> entries) {
        status.quarantine = std::move(entries);
        std::vector<std::string> shown;
        for (const MenuContent::SetAsideEntry& entry : content().setAside->entries)
            shown.push_back(entry.distinction);
        return shown;
    };
    using testing::setAsideProcess;
    using Shown = std::vector<std::string>;
    EXPECT_EQ(distinctions({setAsideProcess("a", "ollama serve --port 1"), setAsideProcess("b", "mlx_lm.server")}),
              (Shown{"", ""}));
    EXPECT_EQ(distinctions({setAsideProcess("a", "/opt/ollama runner --port 53122"),
                            setAsideProcess("b", "/usr/ollama runner --port=8080 --verbose"),
                            setAsideProcess("4711", "ollama serve")}),
              (Shown{":53122", ":8080", "4711"}));
    EXPECT_EQ(distinctions({setAsideProcess("a", "ollama runner --port 80"), setAsideProcess("b", "ollama --port 80")}),
              (Shown{"a", "b"}));
    for (const char* command : {"ollama --port", "ollama --port ", "ollama --port x", "ollama --port 123456"})
        EXPECT_EQ(distinctions({setAsideProcess("a", command), setAsideProcess("b", "ollama")}), (Shown{"a", "b"}))
            << command;
}

TEST_F(MenuContentTest, TheDetailIsNewUnlessItRepeatsTheHeadlineAndTheMetersShowItsFigures)
{
    const Text sentence = "Machine is calm.";
    const std::string figures = "load 20% · swap 2.0 GB (31%)";
    status.headline = sentence;
    status.detail = sentence;
    EXPECT_FALSE(content().header.detailIsNew);
    status.detail = figures + ". Machine is calm.";
    EXPECT_TRUE(content().header.detailIsNew) << "there are no meters";
    status.lastMetrics.emplace().menubarLine = figures;
    EXPECT_FALSE(content().header.detailIsNew);
    EXPECT_EQ(content().header.detail, figures + ". Machine is calm.") << "for tooltips and screen readers";
    for (const char* other : {"load 20% · swap 2.0 GB (31%). Machine is calm. Really.", "Machine is calm",
                              "load 21% · swap 2.0 GB (31%). Machine is calm.", "High load. Watching."}) {
        status.detail = other;
        EXPECT_TRUE(content().header.detailIsNew) << other;
    }
}

TEST_F(MenuContentTest, MissingChecksComeBeforeProtectionInTheLockup)
{
    const struct {
        const char* condition;
        Installation installation;
        const char* lockup;
        const char* helpKey;
        MenuTone tone;
    } rows[] = {
        {"not set up", notInstalled, "Checks not set up", "help_checks_not_set_up", MenuTone::clay},
        {"not set up, off", offAndNotInstalled, "Checks not set up", "help_checks_not_set_up", MenuTone::clay},
        {"off", switchedOff, "Protection Off", "help_protection_off", MenuTone::clay},
        {"on", protecting, "Protection On", "help_protection_on", MenuTone::gold},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.condition);
        install(status, row.installation);
        const MenuContent::Header header = content().header;
        EXPECT_EQ(header.lockup, row.lockup);
        EXPECT_EQ(header.lockupHelp, MenuHelpCopy::paragraph(row.helpKey));
        EXPECT_EQ(header.lockupTone, row.tone);
    }
}

TEST_F(MenuContentTest, TheStatusHelpCollectsItsParagraphsInOrder)
{
    constexpr const char* swap = "help_extra_memory_status";
    constexpr const char* retaining = "help_retaining_memory";
    constexpr const char* notSetUp = "help_checks_not_set_up";
    const struct {
        const char* condition;
        Installation installation;
        std::vector<std::string_view> keys;
    } rows[] = {
        {"on", protecting, {retaining}},
        {"off", switchedOff, {}},
        {"not set up", notInstalled, {notSetUp}},
        {"not set up, off", offAndNotInstalled, {notSetUp}},
    };
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.condition) + " in " + std::string(rawValue(language)));
            install(status, row.installation);
            status.swapCritical = false;
            EXPECT_EQ(content().header.statusHelp, paragraphs(row.keys));
            std::vector<std::string_view> afterSwap{swap};
            afterSwap.insert(afterSwap.end(), row.keys.begin(), row.keys.end());
            status.swapCritical = true;
            EXPECT_EQ(content().header.statusHelp, paragraphs(afterSwap)) << "with critical swap";
        }
    }
}

TEST_F(MenuContentTest, TheLastCheckIsOnlyRemarkedOnWhenItIsOverdue)
{
    constexpr const char* soon = "Checking in a moment.";
    const struct {
        std::optional<Text> lastCheck;
        const char* line;
    } rows[] = {
        {"2026-03-01T12:00:00Z", ""},
        {"2026-03-01T11:59:30.250Z", ""},
        {"2026-03-01T11:58:30Z", ""},  // exactly 90 seconds
        {"2026-03-01T11:58:30", ""},   // without a zone: UTC
        {"2026-03-01T11:58:29.999Z", soon},
        {"2026-02-01T12:00:00Z", soon},
        {"2026-03-01T12:00:00.001Z", soon},  // in the future
        {"2026-03-01T13:58:30+02:00", ""},
        {"2026-03-01T11:59:30+02:00", soon},
        {"2026-03-01 11:59:30", soon},
        {"just now", soon},
        {"", soon},
        {std::nullopt, soon},
    };
    for (const auto& row : rows) {
        status.lastCheckISO = row.lastCheck;
        EXPECT_EQ(content().header.lastCheck, row.line) << row.lastCheck.value_or("none").utf8();
    }
}

TEST_F(MenuContentTest, AStaleIconIsOverdueAndARunningCheckBeatsEverything)
{
    status.icon = QuenchIcon::stale;
    EXPECT_EQ(content().header.lastCheck, "Checking in a moment.");
    situation.checkInFlight = true;
    EXPECT_EQ(content().header.lastCheck, "Checking now");
    status.icon = QuenchIcon::watch;
    EXPECT_EQ(content().header.lastCheck, "Checking now") << "also while the last check is fresh";
    status.lastCheckISO.reset();
    EXPECT_EQ(content().header.lastCheck, "Checking now");
}

TEST_F(MenuContentTest, OnlyAStaleIconMakesAFreshCheckOverdue)
{
    for (const QuenchIcon icon : {QuenchIcon::cool, QuenchIcon::protect, QuenchIcon::watch}) {
        status.icon = icon;
        EXPECT_EQ(content().header.lastCheck, "") << rawValue(icon);
    }
}

TEST_F(MenuContentTest, ThereAreMetersOnlyWithMetrics)
{
    EXPECT_EQ(content().header.meters, std::nullopt);
    status.lastMetrics = LastMetrics{.load1 = 2, .swapPct = 31, .cpuCount = 8, .cpuLoadPct = 25};
    EXPECT_EQ(content().header.meters, MetricsMeters::of(*status.lastMetrics));
}

TEST_F(MenuContentTest, TheStatussOwnTipIsTheTipWhateverElseHolds)
{
    status.memoryReliefTip = "Unload something.";
    EXPECT_EQ(content().header.memoryTip, "Unload something.");
    swapCriticalWithLiveAi();
    EXPECT_EQ(content().header.memoryTip, "Unload something.");
}

TEST_F(MenuContentTest, WithoutATipOfItsOwnHighSwapWithLiveListedAiGivesTheGeneralOne)
{
    const std::optional<Text> nothingToRead[] = {std::nullopt, "", " \n\t\u3000", "\u202E"};
    for (const AppLanguage language : allLanguages) {
        L10n::testingLanguage = language;
        for (const auto& tip : nothingToRead) {
            for (const State state : {State::running, State::paused, State::unknown}) {
                status.memoryReliefTip = tip;
                status.swapCritical = true;
                targetRows[1].state = state;
                EXPECT_EQ(content().header.memoryTip,
                          state == State::unknown ? "" : MenuHelpCopy::paragraph("help_extra_memory_tip"));
                status.swapCritical = false;
                EXPECT_EQ(content().header.memoryTip, "");
            }
        }
    }
}

TEST_F(MenuContentTest, TheMetricsOwnFlagOfHighSwapCountsToo)
{
    status.lastMetrics = LastMetrics{.swapCritical = true};
    EXPECT_EQ(content().header.memoryTip, "");
    targetRows[3].state = State::paused;
    EXPECT_EQ(content().header.memoryTip, MenuHelpCopy::paragraph("help_extra_memory_tip"));
    status.lastMetrics->swapCritical = false;
    EXPECT_EQ(content().header.memoryTip, "");
}

TEST_F(MenuContentTest, TheGeneralTipIsNeverShownWithoutLiveListedAi)
{
    status.swapCritical = true;
    status.lastMetrics = LastMetrics{.swapPct = 99, .swapCritical = true};
    EXPECT_EQ(content().header.memoryTip, "");
    targetRows.push_back({"my-model", State::running, "running"});
    targetRows.push_back({"llama.cpp", State::paused, "Eased back"});  // the row of another label
    EXPECT_EQ(content().header.memoryTip, "");
    targetRows.clear();
    EXPECT_EQ(content().header.memoryTip, "");
}

TEST_F(MenuContentTest, EachTargetHasARowInTheOrderOfTheScan)
{
    targetRows[0] = {"Ollama", State::paused, "Eased back"};
    targetRows[2] = {"LM Studio", State::running, "running"};
    targetRows.push_back({"my-model", State::paused, "Eased back"});
    const MenuContent::Targets targets = content().targets;
    EXPECT_EQ(targets.rows, (std::vector<MenuContent::Target>{{State::paused, "Ollama", "Eased back"},
                                                              {State::unknown, "MLX LM Server", "Idle"},
                                                              {State::running, "LM Studio", "running"},
                                                              {State::unknown, "llama.cpp", "Idle"},
                                                              {State::paused, "my-model", "Eased back"}}));
    EXPECT_EQ(targets.moreRows, 0u);
}

TEST_F(MenuContentTest, TheTargetsAreIntroducedAndExplainedBeforeTheFirstScan)
{
    targetRows.clear();
    const MenuContent::Targets targets = content().targets;
    EXPECT_EQ(targets.rows.size(), 0u);
    EXPECT_EQ(targets.heading, "Protection applies to");
    EXPECT_EQ(targets.help, MenuHelpCopy::paragraph("help_protection_applies_to"));
    EXPECT_EQ(targets.note, "Ollama, MLX, LM Studio headless, llama.cpp. Never code editors, browsers, or Mail.");
}

TEST_F(MenuContentTest, RowsBeyondTheBoundAreCounted)
{
    while (targetRows.size() < MenuContent::mostTargets)
        targetRows.push_back({"my-model", State::paused, "Eased back"});
    EXPECT_EQ(content().targets.rows.size(), MenuContent::mostTargets);
    EXPECT_EQ(content().targets.moreRows, 0u);
    targetRows.push_back({"my-model", State::paused, "Eased back"});
    EXPECT_EQ(content().targets.rows.size(), MenuContent::mostTargets);
    EXPECT_EQ(content().targets.moreRows, 1u);
}

TEST_F(MenuContentTest, ProtectionThatHasNothingToActOnIsAdmitted)
{
    struct Row {
        Installation installation;
        bool overload = false;
        bool listedLive = false;
        const char* line = "";
    };
    const std::pair<const char*, Row> rows[] = {
        {"on", {.installation = protecting, .line = noListedAiOpen}},
        {"on, overload", {.installation = protecting, .overload = true, .line = overloadNoAi}},
        {"on, live", {.installation = protecting, .listedLive = true}},
        {"on, overload, live", {.installation = protecting, .overload = true, .listedLive = true}},
        {"off", {.installation = switchedOff}},
        {"off, overload", {.installation = switchedOff, .overload = true}},
        {"off, live", {.installation = switchedOff, .listedLive = true}},
        {"off, overload, live", {.installation = switchedOff, .overload = true, .listedLive = true}},
        {"not set up", {.installation = notInstalled}},
        {"not set up, overload", {.installation = notInstalled, .overload = true}},
    };
    for (const auto& [condition, row] : rows) {
        install(status, row.installation);
        status.stillOverloaded = row.overload;
        targetRows[3].state = row.listedLive ? State::paused : State::unknown;
        EXPECT_EQ(content().targets.honesty, row.line) << condition;
    }
}

TEST_F(MenuContentTest, OnlyListedAiCountsAsSomethingToActOn)
{
    targetRows.push_back({"my-model", State::paused, "Eased back"});
    targetRows.push_back({"llama.cpp", State::paused, "Eased back"});  // the row of another label
    EXPECT_EQ(content().targets.honesty, noListedAiOpen);
    targetRows.clear();
    EXPECT_EQ(content().targets.honesty, noListedAiOpen);
}

TEST_F(MenuContentTest, ThereIsNoSetAsideSectionWhileNothingIsSetAside)
{
    EXPECT_EQ(content().setAside, std::nullopt);
    status.quarantine = {setAsideProcess("1"), setAsideProcess("2")};
    for (QuarantinedEntry& entry : status.quarantine)
        entry.acknowledged = true;
    EXPECT_EQ(content().setAside, std::nullopt) << "all acknowledged";
}

TEST_F(MenuContentTest, OneEntrySetAsideHasNoButtonThatClearsAll)
{
    status.quarantine = {setAsideProcess("pid-7", "/usr/local/bin/mlx_lm.server --port 8080")};
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_EQ(setAside->heading, "SET ASIDE (1)");
    EXPECT_EQ(setAside->help, MenuHelpCopy::paragraph("help_set_aside"));
    EXPECT_EQ(setAside->entries, (std::vector<MenuContent::SetAsideEntry>{
                                     {.id = "pid-7",
                                      .label = "mlx_lm.server",
                                      .age = "2m 5s ago",
                                      .fullText = "mlx_lm.server\n/usr/local/bin/mlx_lm.server --port 8080\nlooped"}}));
    EXPECT_EQ(setAside->acknowledge, "Acknowledge");
    EXPECT_EQ(setAside->acknowledgeHelp, MenuHelpCopy::paragraph("help_acknowledge"));
    EXPECT_EQ(setAside->clearAll, "");
    EXPECT_TRUE(setAside->enabled);
    EXPECT_EQ(setAside->footnote, "Only Ollama, MLX, LM Studio.");
}

TEST_F(MenuContentTest, TwoEntriesSetAsideCanBeClearedAtOnce)
{
    status.quarantine = {setAsideProcess("b", "lmstudio"), setAsideProcess("a", "ollama")};
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_EQ(setAside->heading, "SET ASIDE (2)");
    EXPECT_EQ(setAside->clearAll, "Clear all (2)");
    EXPECT_EQ(setAside->clearAllHelp, MenuHelpCopy::paragraph("help_clear_all_aside"));
    EXPECT_EQ(labels(*setAside), (std::vector<std::string>{"lmstudio", "ollama"}));
}

TEST_F(MenuContentTest, OfSixEntriesSetAsideTheFirstFourAreListed)
{
    for (const char* id : {"1", "2", "3", "4", "5", "6"})
        status.quarantine.push_back(setAsideProcess(id, std::string("ollama-") + id));
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_EQ(setAside->heading, "SET ASIDE (6)");
    EXPECT_EQ(setAside->clearAll, "Clear all (6)");
    EXPECT_EQ(labels(*setAside), (std::vector<std::string>{"ollama-1", "ollama-2", "ollama-3", "ollama-4"}));
}

TEST_F(MenuContentTest, AcknowledgedEntriesAreNeitherListedNorCounted)
{
    for (const char* id : {"1", "2", "3", "4", "5", "6", "7"})
        status.quarantine.push_back(setAsideProcess(id, std::string("ollama-") + id));
    for (const std::size_t at : {0, 2, 3, 6})
        status.quarantine[at].acknowledged = true;
    auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_EQ(setAside->heading, "SET ASIDE (3)");
    EXPECT_EQ(setAside->clearAll, "Clear all (3)");
    EXPECT_EQ(labels(*setAside), (std::vector<std::string>{"ollama-2", "ollama-5", "ollama-6"}));
    status.quarantine[1].acknowledged = status.quarantine[4].acknowledged = true;
    setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_EQ(setAside->heading, "SET ASIDE (1)");
    EXPECT_EQ(setAside->clearAll, "");
}

TEST_F(MenuContentTest, WhileOneIsBeingAcknowledgedTheButtonsAreDisabled)
{
    status.quarantine = {setAsideProcess("1"), setAsideProcess("2")};
    situation.ackBusy = true;
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_FALSE(setAside->enabled);
    EXPECT_EQ(setAside->acknowledge, "Acknowledging…");
    EXPECT_EQ(setAside->clearAll, "Clear all (2)");
}

TEST_F(MenuContentTest, AChangeOfProtectionDoesNotDisableAcknowledging)
{
    status.quarantine = {setAsideProcess("1")};
    situation.protectBusy = true;
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    EXPECT_TRUE(setAside->enabled);
    EXPECT_EQ(setAside->acknowledge, "Acknowledge");
    EXPECT_EQ(setAside->reason, "");
}

TEST_F(MenuContentTest, AcknowledgingNeedsAToolThatCanRunAndSaysSo)
{
    const std::pair<ToolAvailability, const char*> lacks[] = {
        {ToolAvailability::toolNotFound, "Needs the quenchly tool, which was not found"},
        {ToolAvailability::interpreterNotFound, "Needs Node.js, which was not found"},
    };
    status.quarantine = {setAsideProcess("1")};
    for (const auto& [tool, reason] : lacks) {
        for (const bool busy : {false, true}) {
            situation.toolAvailability = tool;
            situation.ackBusy = busy;
            const auto setAside = content().setAside;
            ASSERT_TRUE(setAside);
            EXPECT_FALSE(setAside->enabled);
            EXPECT_EQ(setAside->reason, reason);
            EXPECT_EQ(setAside->acknowledge, busy ? "Acknowledging…" : "Acknowledge");
        }
    }
}

TEST_F(MenuContentTest, AnEntryIsCalledByItsProgramOrItsAgent)
{
    const struct {
        QuarantinedEntry entry;
        const char* label;
    } rows[] = {
        {{.id = "1", .cmd = "/usr/local/bin/ollama serve"}, "ollama"},
        {{.id = "1", .cmd = "  lmstudio --headless"}, "lmstudio"},
        {{.id = "my-ollama"}, "my-ollama"},
        {{.id = "ollama", .cmd = "/"}, "/"},
        {{.id = "com.example.ollama", .kind = "launchd"}, "ollama"},
        {{.id = "1", .kind = "launchd", .cmd = "com.example.MLX"}, "MLX"},
        {{.id = "1", .kind = "launchd", .cmd = "ai.lm-studio.headless"}, "LM Studio"},
        {{.id = "1", .kind = "launchd", .cmd = "ai.lmstudio"}, "LM Studio"},
        {{.id = "1", .kind = "launchd", .cmd = "com.example.other"}, "com.example.other"},
    };
    for (const auto& row : rows) {
        status.quarantine = {row.entry};
        ASSERT_TRUE(content().setAside);
        EXPECT_EQ(labels(*content().setAside), std::vector<std::string>{row.label}) << row.entry.cmd.utf8();
    }
}

TEST_F(MenuContentTest, AnEntrysAgeIsLeftOutWhenItsTimeIsUnreadableOrInTheFuture)
{
    const std::pair<const char*, const char*> rows[] = {
        {"2026-03-01T12:00:00Z", "0s ago"},
        {"2026-03-01T11:59:00.100Z", "59s ago"},
        {"2026-03-01T11:59:00Z", "1m 0s ago"},
        {"2026-03-01T09:55:00Z", "2h 5m ago"},
        {"2026-03-01T12:00:01Z", ""},
        {"yesterday", ""},
        {"", ""},
    };
    status.quarantine = {setAsideProcess("1")};
    for (const auto& [time, age] : rows) {
        status.quarantine[0].quarantinedAt = time;
        ASSERT_TRUE(content().setAside);
        EXPECT_EQ(content().setAside->entries[0].age, age) << time;
    }
}

TEST_F(MenuContentTest, TheFullTextAddsTheCommandAndTheReasonWhereTheySayMore)
{
    const struct {
        const char* command;
        const char* reason;
        const char* fullText;
    } rows[] = {
        {"ollama serve", "looped", "ollama\nollama serve\nlooped"},
        {"ollama", "looped", "ollama\nlooped"},
        {"ollama serve", "", "ollama\nollama serve"},
        {"ollama", "", "ollama"},
        {"ollama", "ollama", "ollama"},
        {"ollama ", "\u202E", "ollama"},
        {"", " \n", "pid-7"},
        {"  ", "looped", "pid-7\nlooped"},
    };
    for (const auto& row : rows) {
        status.quarantine = {{.id = "pid-7", .cmd = row.command, .reason = row.reason}};
        ASSERT_TRUE(content().setAside);
        SCOPED_TRACE(std::string(row.command) + ", " + row.reason);
        EXPECT_EQ(content().setAside->entries[0].fullText, row.fullText);
        EXPECT_NE(content().setAside->entries[0].label, "");
    }
}

TEST_F(MenuContentTest, TheFooterNamesTheVersionAndSaysWhenUpdatesAreNotConfigured)
{
    EXPECT_EQ(content().footer, (MenuContent::Footer{.version = "1.4.2"}));
    situation.updaterConfigured = false;
    situation.version = "";
    EXPECT_EQ(content().footer, (MenuContent::Footer{.updates = "Updates not configured yet"}));
}

TEST_F(MenuContentTest, ADifferenceInAnyPartMakesTheContentsDiffer)
{
    const MenuContent before = content();
    EXPECT_EQ(before, content());
    MenuContent others[5] = {before, before, before, before, before};
    others[0].header.detail += ".";
    others[1].targets.rows[3].state = State::running;
    others[2].setAside = MenuContent::SetAside{};
    others[3].actions[0][0].enabled = false;
    others[4].footer.version += ".1";
    for (const MenuContent& other : others)
        EXPECT_NE(before, other);
}

}  // namespace
}  // namespace quenchly
