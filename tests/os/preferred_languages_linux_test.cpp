#include "preferred_languages.h"

#include <gtest/gtest.h>

#include "language_environment.h"

namespace quenchly {
namespace {

using Tags = std::vector<std::string>;

class PreferredLanguages : public testing::LanguageEnvironment {
protected:
    static Tags preferences(const Variables& variables)
    {
        set(variables);
        return preferredLanguages();
    }
};

TEST_F(PreferredLanguages, NothingSetGivesNone)
{
    EXPECT_EQ(preferences({}), Tags{});
}

TEST_F(PreferredLanguages, TheFirstNonEmptyLocaleVariableCounts)
{
    EXPECT_EQ(preferences({{"LANG", "ko_KR.UTF-8"}}), Tags{"ko_KR.UTF-8"});
    EXPECT_EQ(preferences({{"LANG", "ko_KR.UTF-8"}, {"LC_MESSAGES", "ja_JP.UTF-8"}}), Tags{"ja_JP.UTF-8"});
    EXPECT_EQ(preferences({{"LANG", "ko_KR"}, {"LC_MESSAGES", "ja_JP"}, {"LC_ALL", "zh_TW"}}), Tags{"zh_TW"});
    EXPECT_EQ(preferences({{"LANG", "ko_KR"}, {"LC_MESSAGES", ""}, {"LC_ALL", ""}}), Tags{"ko_KR"});
}

TEST_F(PreferredLanguages, LanguageListComesBeforeTheLocale)
{
    EXPECT_EQ(preferences({{"LANGUAGE", "fr:ja"}, {"LANG", "ko_KR.UTF-8"}}), (Tags{"fr", "ja", "ko_KR.UTF-8"}));
}

TEST_F(PreferredLanguages, EmptyPiecesOfTheLanguageListAreDropped)
{
    EXPECT_EQ(preferences({{"LANGUAGE", ":fr::zh_TW:"}, {"LANG", "en_US"}}), (Tags{"fr", "zh_TW", "en_US"}));
    EXPECT_EQ(preferences({{"LANGUAGE", "::"}, {"LANG", "en_US"}}), Tags{"en_US"});
    EXPECT_EQ(preferences({{"LANGUAGE", ""}, {"LANG", "en_US"}}), Tags{"en_US"});
}

TEST_F(PreferredLanguages, UntranslatedLocalesSwitchTheLanguageListOff)
{
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "C.utf8"})
        EXPECT_EQ(preferences({{"LANGUAGE", "ja"}, {"LANG", locale}}), Tags{locale});
    EXPECT_EQ(preferences({{"LANGUAGE", "ja"}}), Tags{});
    EXPECT_EQ(preferences({{"LANGUAGE", "ja"}, {"LANG", "ko_KR"}, {"LC_ALL", "C"}}), Tags{"C"});
}

}  // namespace
}  // namespace quenchly
