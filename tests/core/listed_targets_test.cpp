#include "listed_targets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "l10n.h"
#include "text.h"

namespace quenchly {
namespace {

using ListedTargets::Target;

std::string textIn(AppLanguage language, std::string_view key)
{
    L10n::testingLanguage = language;
    std::string text = L10n::t(key);
    L10n::testingLanguage.reset();
    return text;
}

/// The items of the list that a text begins with.
std::vector<std::string> listAtStart(const std::string& text)
{
    const std::string list = replacingAll(text.substr(0, std::min(text.find(". "), text.find("。"))), "、", ", ");
    std::vector<std::string> items;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(", ", start), list.size());
        items.push_back(list.substr(start, end - start));
        start = end + 2;
    }
    return items;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// By its name, or by the name of each of its programs.
bool isNamedIn(const std::string& text, const Target& target)
{
    return contains(text, target.nameInTexts) ||
           std::ranges::all_of(target.keys, [&](const auto& key) { return contains(text, key.pattern); });
}

class ListedTargetsTest : public ::testing::TestWithParam<std::string_view> {
protected:
    AppLanguage language = *fromRawValue<AppLanguage>(GetParam());
};

TEST_P(ListedTargetsTest, ThePanelSaysThatProtectionAppliesToThemAndToNoOthers)
{
    const std::vector<std::string> items = listAtStart(textIn(language, "protection_targets"));
    ASSERT_EQ(items.size(), ListedTargets::all.size());
    for (std::size_t i = 0; i < items.size(); ++i)
        EXPECT_TRUE(items[i] == ListedTargets::all[i].nameInTexts ||
                    items[i] == std::string(ListedTargets::all[i].nameInTexts) + " headless")
            << items[i];
}

TEST_P(ListedTargetsTest, TheHelpNamesEachOrEachOfItsPrograms)
{
    const std::string help = textIn(language, "help_protection_applies_to");
    for (const Target& target : ListedTargets::all)
        EXPECT_TRUE(isNamedIn(help, target)) << target.displayName << ": " << help;
}

TEST_P(ListedTargetsTest, TheHelpOfProtectionNamesEachOrTheProgramThatItsRowIsLookedForBy)
{
    const std::string help = textIn(language, "help_protection_on");
    for (const Target& target : ListedTargets::all)
        EXPECT_TRUE(contains(help, target.nameInTexts) || contains(help, target.keys.front().pattern))
            << target.displayName << ": " << help;
}

TEST_P(ListedTargetsTest, TheSetAsideSectionNamesJustThoseThatAreSetAside)
{
    const std::string footnote = textIn(language, "only_listed_ai");
    for (const Target& target : ListedTargets::all)
        EXPECT_EQ(contains(footnote, target.nameInTexts), !target.inCommand.empty()) << footnote;
}

INSTANTIATE_TEST_SUITE_P(EachLanguage, ListedTargetsTest, ::testing::ValuesIn(rawValues<AppLanguage>),
                         [](const auto& language) { return std::string(language.param); });

TEST(ListedTargetsTable, ATargetIsSetAsideAsAProcessAndAsAJobOrAsNeither)
{
    for (const Target& target : ListedTargets::all) {
        EXPECT_EQ(target.inCommand.empty(), target.inLaunchdLabel.empty()) << target.displayName;
        EXPECT_EQ(target.inCommand.empty(), target.launchdRowLabel.empty()) << target.displayName;
    }
}

TEST(ListedTargetsTable, TheMarksOfSetAsideEntriesAreWrittenAsTheyAreCompared)
{
    for (const Target& target : ListedTargets::all)
        for (const auto& marks : {target.inCommand, target.inLaunchdLabel})
            for (const std::string_view mark : marks) {
                EXPECT_FALSE(mark.empty());
                EXPECT_EQ(lowercased(mark), mark);
            }
}

TEST(ListedTargetsTable, NoKeyStandsForTwoTargets)
{
    std::vector<std::string_view> keys;
    for (const Target& target : ListedTargets::all)
        for (const auto& key : target.keys)
            keys.push_back(key.key);
    std::ranges::sort(keys);
    EXPECT_TRUE(std::ranges::adjacent_find(keys) == keys.end());
}

}  // namespace
}  // namespace quenchly
