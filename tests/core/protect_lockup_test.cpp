#include "protect_lockup.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "shown_language.h"

namespace quenchly {
namespace {

using ProtectLockupTexts = testing::InEnglish;

TEST_F(ProtectLockupTexts, MissingChecksComeBeforeProtectionAndSavedWorkDoesNotMatter)
{
    const struct {
        const char* condition;
        ProtectLockup::Facts facts;
        const char* extra;
        const char* panel;
        std::optional<std::string> retaining;
    } rows[] = {
        {.condition = "not installed, off",
         .facts = {.protectOn = false, .agentInstalled = false},
         .extra = "Checks not set up",
         .panel = "Checks not set up"},
        {.condition = "not installed, on",
         .facts = {.protectOn = true, .agentInstalled = false},
         .extra = "Checks not set up",
         .panel = "Checks not set up"},
        {.condition = "installed, off",
         .facts = {.protectOn = false, .agentInstalled = true},
         .extra = "Protection Off",
         .panel = "Protection Off"},
        {.condition = "installed, on",
         .facts = {.protectOn = true, .agentInstalled = true},
         .extra = "On",
         .panel = "Protection On",
         .retaining = "Retaining memory: On"},
    };
    for (const auto& row : rows) {
        for (const bool workSaved : {false, true}) {
            SCOPED_TRACE(std::string(row.condition) + (workSaved ? ", work saved" : ""));
            ProtectLockup::Facts facts = row.facts;
            facts.workSaved = workSaved;
            EXPECT_EQ(ProtectLockup::extra(facts), row.extra);
            EXPECT_EQ(ProtectLockup::panel(facts), row.panel);
            EXPECT_EQ(ProtectLockup::retainingMemoryFact(facts), row.retaining);
        }
    }
}

TEST_F(ProtectLockupTexts, TheTextsFollowTheLanguage)
{
    L10n::testingLanguage = AppLanguage::ja;
    const ProtectLockup::Facts on{.protectOn = true, .workSaved = false, .agentInstalled = true};
    EXPECT_EQ(ProtectLockup::extra(on), "オン");
    EXPECT_EQ(ProtectLockup::panel(on), "Protection オン");
    EXPECT_EQ(ProtectLockup::retainingMemoryFact(on), "メモリ保持: オン");
    EXPECT_EQ(ProtectLockup::panel({.agentInstalled = true}), "Protection オフ");
    EXPECT_EQ(ProtectLockup::panel({}), "チェック未設定");
}

TEST(ProtectLockupKeys, AreTheKeysOfTheTables)
{
    EXPECT_EQ(ProtectLockup::checksNotSetUp, "checks_not_set_up");
    EXPECT_EQ(ProtectLockup::extraOn, "extra_on");
    EXPECT_EQ(ProtectLockup::protectionOn, "protection_on");
    EXPECT_EQ(ProtectLockup::protectionOff, "protection_off");
    EXPECT_EQ(ProtectLockup::retainingMemoryOn, "retaining_memory_on");
    EXPECT_EQ(ProtectLockup::retainingMemory, "retaining_memory");
}

}  // namespace
}  // namespace quenchly
