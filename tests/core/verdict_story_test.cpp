#include "verdict_story.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "test_files.h"

namespace quenchly {
namespace {

using namespace VerdictStoryLogic;

constexpr const char* holdingWhileHot = "Holding until pressure drops. The machine is not fighting the AI for CPU.";
constexpr const char* holdingAfterHeat = "Holding until pressure drops. Memory stays; full speed returns when safe.";
constexpr const char* eased = "AI is eased back. The machine is not fighting the AI for CPU.";
constexpr const char* easedSwap =
    "AI is eased back. The machine is not fighting the AI for CPU. Using extra memory on disk. Work is progressing.";
constexpr const char* onDisk = "Using extra memory on disk. Work is progressing.";
constexpr const char* calm = "Machine is calm. AI keeps running as usual.";
constexpr const char* continued = "Calm streak. AI continued where it left off.";

struct Row {
    const char* condition;
    Situation situation;
    const char* text;
    QuenchTone tone;
};

void expectRows(std::initializer_list<Row> rows)
{
    for (const Row& row : rows) {
        const VerdictStory told = story(row.situation);
        EXPECT_EQ(told.text, row.text) << row.condition;
        EXPECT_EQ(told.tone, row.tone) << row.condition;
    }
}

TEST(VerdictStory, TheTableWhileHot)
{
    const auto protect = QuenchTone::protect;
    const auto watch = QuenchTone::watch;
    expectRows({
        {"observing only", {.hot = true, .observeOnly = true}, "Watching. AI keeps running.", watch},
        {"slowed, swap critical", {.hot = true, .swapCritical = true, .slowActive = true}, easedSwap, protect},
        {"slowed", {.hot = true, .slowActive = true}, eased, protect},
        {"none held, targets unknown", {.hot = true}, "Overload. Watching.", watch},
        {"none held, some running", {.hot = true, .targetsRunning = 1}, "Overload. AI still running.", watch},
        {"none held, none running", {.hot = true, .targetsRunning = 0}, "Overload. No listed AI to ease.", watch},
        {"none held, fewer than none running", {.hot = true, .targetsRunning = -1}, "Overload. Watching.", watch},
        {"held, swap critical", {.hot = true, .pausedCount = 1, .swapCritical = true}, onDisk, protect},
        {"held", {.hot = true, .pausedCount = 1}, holdingWhileHot, protect},
    });
}

TEST(VerdictStory, AnEarlierRowWinsWhileHot)
{
    const auto protect = QuenchTone::protect;
    const auto watch = QuenchTone::watch;
    expectRows({
        {"observing beats everything",
         {.verdict = "false-heat",
          .hot = true,
          .pausedCount = 3,
          .observeOnly = true,
          .lastRestoreAt = "t",
          .targetsRunning = 0,
          .swapCritical = true,
          .slowActive = true},
         "Watching. AI keeps running.",
         watch},
        {"slowed beats held", {.hot = true, .pausedCount = 2, .slowActive = true}, eased, protect},
        {"slowed on critical swap beats held",
         {.hot = true, .pausedCount = 2, .swapCritical = true, .slowActive = true},
         easedSwap,
         protect},
        {"slowed beats running targets", {.hot = true, .targetsRunning = 4, .slowActive = true}, eased, protect},
        {"critical swap alone changes nothing while none is held",
         {.hot = true, .swapCritical = true},
         "Overload. Watching.",
         watch},
        {"false heat is not consulted", {.verdict = "false-heat", .hot = true}, "Overload. Watching.", watch},
        {"the last restore is not consulted", {.hot = true, .lastRestoreAt = "t"}, "Overload. Watching.", watch},
        {"running targets do not matter while one is held",
         {.hot = true, .pausedCount = 1, .targetsRunning = 0},
         holdingWhileHot,
         protect},
        {"a negative count counts as none held", {.hot = true, .pausedCount = -1}, "Overload. Watching.", watch},
    });
}

TEST(VerdictStory, TheTableWhileNotHot)
{
    const auto cool = QuenchTone::cool;
    const auto protect = QuenchTone::protect;
    const auto watch = QuenchTone::watch;
    expectRows({
        {"false heat, none held, not slowed", {.verdict = "false-heat"}, onDisk, watch},
        {"none held, slowed, swap critical", {.swapCritical = true, .slowActive = true}, easedSwap, protect},
        {"none held, slowed, false heat", {.verdict = "false-heat", .slowActive = true}, easedSwap, protect},
        {"none held, slowed", {.slowActive = true}, eased, protect},
        {"none held, restored once", {.lastRestoreAt = "2026-03-01T12:00:00Z"}, continued, cool},
        {"none held", {}, calm, cool},
        {"held, swap critical", {.pausedCount = 1, .swapCritical = true}, onDisk, protect},
        {"held", {.pausedCount = 1}, holdingAfterHeat, protect},
    });
}

TEST(VerdictStory, AnEarlierRowWinsWhileNotHot)
{
    const auto cool = QuenchTone::cool;
    const auto protect = QuenchTone::protect;
    const auto watch = QuenchTone::watch;
    expectRows({
        {"false heat beats critical swap", {.verdict = "false-heat", .swapCritical = true}, onDisk, watch},
        {"false heat beats the last restore", {.verdict = "false-heat", .lastRestoreAt = "t"}, onDisk, watch},
        {"a held target under false heat", {.verdict = "false-heat", .pausedCount = 1}, holdingAfterHeat, protect},
        {"a held target under false heat and critical swap",
         {.verdict = "false-heat", .pausedCount = 1, .swapCritical = true},
         onDisk,
         protect},
        {"a held target, slowed", {.pausedCount = 1, .slowActive = true}, holdingAfterHeat, protect},
        {"slowed beats the last restore", {.lastRestoreAt = "t", .slowActive = true}, eased, protect},
        {"a held target beats the last restore", {.pausedCount = 2, .lastRestoreAt = "t"}, holdingAfterHeat, protect},
        {"the last restore may be empty", {.lastRestoreAt = ""}, continued, cool},
        {"critical swap alone does not disturb the calm", {.swapCritical = true}, calm, cool},
        {"observing is not consulted", {.observeOnly = true}, calm, cool},
        {"observing is not consulted with one held",
         {.pausedCount = 1, .observeOnly = true},
         holdingAfterHeat,
         protect},
        {"running targets are not consulted", {.targetsRunning = 5}, calm, cool},
        {"a negative count under false heat is not none", {.verdict = "false-heat", .pausedCount = -1}, calm, cool},
        {"a negative count, slowed", {.pausedCount = -1, .slowActive = true}, eased, protect},
        {"a negative count, restored once", {.pausedCount = -1, .lastRestoreAt = "t"}, continued, cool},
        {"false heat in other letters", {.verdict = "False-Heat"}, calm, cool},
        {"false heat with a blank", {.verdict = "false-heat "}, calm, cool},
        {"another verdict", {.verdict = "cool"}, calm, cool},
    });
}

TEST(VerdictStory, TheFixedTextsReadAsTheyShould)
{
    EXPECT_EQ(easedBackStatus, eased);
    EXPECT_EQ(easedBackStatusSwap, easedSwap);
    EXPECT_EQ(extraMemoryOnDisk, onDisk);
    EXPECT_EQ(extraMemoryKeepsRunning, "Using extra memory on disk. AI keeps running.");
    EXPECT_EQ(easedBackTargetLine, "Eased back");
    EXPECT_EQ(overloadWatching, "Overload. Watching.");
    EXPECT_EQ(overloadAiRunning, "Overload. AI still running.");
    EXPECT_EQ(overloadNoAi, "Overload. No listed AI to ease.");
    EXPECT_EQ(overloadNoListedAi, overloadNoAi);
    EXPECT_EQ(noListedAiOpen, "No listed AI is open. Other AI is not eased.");
}

TEST(ProtectionAppliesHonesty, SpeaksOnlyWhenProtectionIsOnAndHasNothingToActOn)
{
    const struct {
        ProtectionApplies facts;
        std::optional<std::string_view> expected;
    } rows[] = {
        {{.protectOn = false, .overload = false, .anyListedLive = false}, std::nullopt},
        {{.protectOn = false, .overload = false, .anyListedLive = true}, std::nullopt},
        {{.protectOn = false, .overload = true, .anyListedLive = false}, std::nullopt},
        {{.protectOn = false, .overload = true, .anyListedLive = true}, std::nullopt},
        {{.protectOn = true, .overload = false, .anyListedLive = false},
         "No listed AI is open. Other AI is not eased."},
        {{.protectOn = true, .overload = false, .anyListedLive = true}, std::nullopt},
        {{.protectOn = true, .overload = true, .anyListedLive = false}, "Overload. No listed AI to ease."},
        {{.protectOn = true, .overload = true, .anyListedLive = true}, std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(protectionAppliesHonesty(row.facts), row.expected)
            << (row.facts.protectOn ? "on" : "off") << (row.facts.overload ? ", overload" : ", no overload")
            << (row.facts.anyListedLive ? ", live" : ", none live");
}

TEST(HeldTargetDetail, CriticalSwapBeatsOverload)
{
    EXPECT_EQ(heldTargetDetail({.swapCritical = true, .stillOverloaded = true}), onDisk);
    EXPECT_EQ(heldTargetDetail({.swapCritical = true, .stillOverloaded = false}), onDisk);
    EXPECT_EQ(heldTargetDetail({.swapCritical = false, .stillOverloaded = true}), holdingWhileHot);
    EXPECT_EQ(heldTargetDetail({.swapCritical = false, .stillOverloaded = false}), "Safety checking");
}

TEST(TargetProtectDetail, SavedWorkDoesNotMatter)
{
    EXPECT_EQ(targetProtectDetail(true), "Eased back");
    EXPECT_EQ(targetProtectDetail(false), "Eased back");
}

}  // namespace
}  // namespace quenchly
