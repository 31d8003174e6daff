#include "help_wording.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "help_copy.h"
#include "shown_language.h"
#include "this_computer.h"

namespace quenchly {
namespace {

using HelpWording::withComputerForMac;
using testing::allLanguages;

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

bool saysMac(std::string_view text)
{
    std::size_t at = text.find("Mac");
    while (at != text.npos && text.substr(at).starts_with("Machine"))
        at = text.find("Mac", at + 1);
    return at != text.npos;
}

template <class Visit>
void visitHelp(Visit visit)
{
    for (const AppLanguage language : allLanguages)
        for (const auto& [key, text] : L10n::table(language))
            if (key.starts_with("help_")) {
                SCOPED_TRACE(std::string(rawValue(language)) + ' ' + std::string(key));
                visit(language, key, std::string(text), withComputerForMac(text, language));
            }
}

TEST(HelpWording, TheComputerTakesThePlaceOfTheMac)
{
    const struct {
        AppLanguage language;
        std::string_view mac;
        std::string_view computer;
    } rows[] = {
        {AppLanguage::en, "When your Mac is busy, a Mac.", "When your computer is busy, a computer."},
        {AppLanguage::tl, "Kapag mabigat ang load ng Mac mo", "Kapag mabigat ang load ng computer mo"},
        {AppLanguage::ja, "このMacのブラウザ、MacとAIが", "このコンピュータのブラウザ、コンピュータとAIが"},
        {AppLanguage::zhHans, "当 Mac 负载很高时，Mac 与 AI", "当电脑负载很高时，电脑与 AI"},
        {AppLanguage::zhHans, "卸载 Mac CPU", "卸载电脑 CPU"},
        {AppLanguage::zhHant, "在這台 Mac 的瀏覽器", "在這台電腦的瀏覽器"},
        {AppLanguage::ko, "이 Mac의 브라우저, Mac에서", "이 컴퓨터의 브라우저, 컴퓨터에서"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(withComputerForMac(row.mac, row.language), row.computer);
}

TEST(HelpWording, KoreanParticlesAgreeWithTheWord)
{
    EXPECT_EQ(withComputerForMac("Mac이 Mac은 Mac을 Mac과 Mac으로 Mac이나", AppLanguage::ko),
              "컴퓨터가 컴퓨터는 컴퓨터를 컴퓨터와 컴퓨터로 컴퓨터나");
}

TEST(HelpWording, NamesThatContainTheWordStay)
{
    for (const AppLanguage language : allLanguages)
        for (const std::string_view text : {"macOS", "MacBook Pro", "iMac", ""})
            EXPECT_EQ(withComputerForMac(text, language), text) << rawValue(language);
}

TEST(HelpWording, NoParagraphOfAnyLanguageKeepsTheMac)
{
    visitHelp([](AppLanguage, std::string_view, const std::string& given, const std::string& shown) {
        EXPECT_FALSE(saysMac(shown)) << shown;
        EXPECT_EQ(shown != given, saysMac(given));
    });
}

TEST(HelpWording, NothingAroundTheWordIsLeftAsItWasForTheMac)
{
    visitHelp([](AppLanguage language, std::string_view, const std::string&, const std::string& shown) {
        for (const char* wrong : {"컴퓨터이 ", "컴퓨터은 ", "컴퓨터을 ", "컴퓨터과 ", "컴퓨터으로", "컴퓨터이나"})
            EXPECT_FALSE(contains(shown, wrong)) << shown;
        for (const char* wrong : {" 电脑", "电脑 ", " 電腦", "電腦 "})
            EXPECT_FALSE(contains(shown, wrong)) << shown;
        if (language == AppLanguage::en || language == AppLanguage::tl) {
            EXPECT_FALSE(shown.starts_with("computer") || contains(shown, ". computer"));
        }
    });
}

TEST(HelpWording, HelpIsShownInTheWordsOfThisSystem)
{
    visitHelp([](AppLanguage language, std::string_view key, const std::string& given, const std::string& computer) {
        L10n::testingLanguage = language;
        EXPECT_EQ(MenuHelpCopy::paragraph(key), thisComputerIsAMac() ? given : computer);
    });
    L10n::testingLanguage.reset();
}

#ifndef __APPLE__

TEST(HelpWording, LinuxRunsOnNoMac)
{
    EXPECT_FALSE(thisComputerIsAMac());
}

#endif

}  // namespace
}  // namespace quenchly
