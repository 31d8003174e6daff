#include "settings_of_this_run.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

TEST(SettingsOfThisRunTest, TheLoginItemRemembersForThisRun)
{
    const auto item = makeLoginItemOfThisRun();
    EXPECT_EQ(item->status(), LoginItem::Status::notRegistered);
    EXPECT_EQ(item->registerItem(), "");
    EXPECT_EQ(item->status(), LoginItem::Status::enabled);
    EXPECT_EQ(item->unregisterItem(), "");
    EXPECT_EQ(item->status(), LoginItem::Status::notRegistered);
}

TEST(SettingsOfThisRunTest, TheDefaultsRememberForThisRun)
{
    const auto defaults = makeUserDefaultsOfThisRun();
    EXPECT_FALSE(defaults->contains("key"));
    defaults->setBool("key", false);
    EXPECT_TRUE(defaults->contains("key"));
    EXPECT_FALSE(makeUserDefaultsOfThisRun()->contains("key"));
}

}  // namespace
}  // namespace quenchly
