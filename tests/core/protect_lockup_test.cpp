#include "protect_lockup.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "l10n.h"

namespace quenchly {
namespace {

class ProtectLockupTexts : public ::testing::Test {
protected:
    void SetUp() override { L10n::testingLanguage = AppLanguage::en; }
    void TearDown() override { L10n::testingLanguage = std::nullopt; }
};

TEST_F(ProtectLockupTexts, EveryCombination)
{
    const struct {
        ProtectLockup::Facts facts;
        const char* extra;
        const char* panel;
        std::optional<std::string> retaining;
    } rows[] = {
        {{.protectOn = false, .workSaved = false, .agentInstalled = false},
         "Checks not set up",
         "Checks not set up",
         {}},
        {{.protectOn = false, .workSaved = true, .agentInstalled = false},
         "Checks not set up",
         "Checks not set up",
         {}},
        {{.protectOn = true, .workSaved = false, .agentInstalled = false},
         "Checks not set up",
         "Checks not set up",
         {}},
        {{.protectOn = true, .workSaved = true, .agentInstalled = false}, "Checks not set up", "Checks not set up", {}},
        {{.protectOn = false, .workSaved = false, .agentInstalled = true}, "Protection Off", "Protection Off", {}},
        {{.protectOn = false, .workSaved = true, .agentInstalled = true}, "Protection Off", "Protection Off", {}},
        {{.protectOn = true, .workSaved = false, .agentInstalled = true},
         "On",
         "Protection On",
         "Retaining memory: On"},
        {{.protectOn = true, .workSaved = true, .agentInstalled = true}, "On", "Protection On", "Retaining memory: On"},
    };
    for (const auto& row : rows) {
        const std::string which = std::string(row.facts.protectOn ? "on " : "off ") +
                                  (row.facts.workSaved ? "saved " : "unsaved ") +
                                  (row.facts.agentInstalled ? "installed" : "not installed");
        EXPECT_EQ(ProtectLockup::extra(row.facts), row.extra) << which;
        EXPECT_EQ(ProtectLockup::panel(row.facts), row.panel) << which;
        EXPECT_EQ(ProtectLockup::retainingMemoryFact(row.facts), row.retaining) << which;
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
