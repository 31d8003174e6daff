#include <gtest/gtest.h>

#include "test_files.h"
#include "user_defaults.h"

namespace quenchly {
namespace {

constexpr const char* key = "quenchly.openAtLogin.didApplyDefault";

TEST(UserDefaultsLinux, WhatIsStoredIsThereForTheNextStart)
{
    const testing::ScratchFolder settings;
    {
        const auto defaults = makeUserDefaults(settings.path());
        EXPECT_FALSE(defaults->contains(key));
        defaults->setBool(key, true);
        EXPECT_TRUE(defaults->contains(key));
    }
    EXPECT_TRUE(makeUserDefaults(settings.path())->contains(key));
}

TEST(UserDefaultsLinux, AFalseValueIsStoredToo)
{
    const testing::ScratchFolder settings;
    makeUserDefaults(settings.path())->setBool(key, false);
    EXPECT_TRUE(makeUserDefaults(settings.path())->contains(key));
}

TEST(UserDefaultsLinux, OtherKeysAreNotThere)
{
    const testing::ScratchFolder settings;
    const auto defaults = makeUserDefaults(settings.path());
    defaults->setBool(key, true);
    EXPECT_FALSE(defaults->contains("quenchly.openAtLogin"));
    EXPECT_FALSE(defaults->contains("quenchly.openAtLogin.didApplyDefault.more"));
}

TEST(UserDefaultsLinux, WhereNothingCanBeWrittenTheValueStandsForThisRun)
{
    const testing::ScratchFolder settings;
    settings.write("quenchly", "a file where the folder should be");
    const auto defaults = makeUserDefaults(settings.path());
    defaults->setBool(key, true);
    EXPECT_TRUE(defaults->contains(key));
}

}  // namespace
}  // namespace quenchly
