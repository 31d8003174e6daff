#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "menu_content.h"
#include "menu_content_fixture.h"
#include "text.h"

namespace quenchly {
namespace {

using namespace std::string_literals;
using testing::MenuContentTest;
using testing::setAsideProcess;

constexpr std::size_t longestLine = 400;      // code points
constexpr std::size_t longestFullText = 600;  // code points of each of its lines

std::size_t codePoints(std::string_view utf8)
{
    return std::count_if(utf8.begin(), utf8.end(),
                         [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

bool isHarmlessLine(std::string_view text)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    if (!isValidUtf8(text) || std::any_of(text.begin(), text.end(), isControl))
        return false;
    for (const char* mark :
         {"\u0085", "\u009B", "\u2028", "\u2029", "\u061C", "\u200E", "\u200F", "\u202A", "\u202E", "\u2066", "\u2069"})
        if (text.find(mark) != std::string_view::npos)
            return false;
    return true;
}

/// The texts that come from files and are shown in one line, without the tip.
std::vector<std::string> lines(const MenuContent& content)
{
    std::vector<std::string> result{content.header.headline, content.header.detail};
    for (const MenuContent::Target& row : content.targets.rows)
        result.push_back(row.name);
    for (const MenuContent::SetAsideEntry& entry : content.setAside->entries)
        result.push_back(entry.label);
    return result;
}

std::vector<std::string> splitLines(const std::string& text)
{
    std::vector<std::string> result(1);
    for (const char c : text) {
        if (c == '\n')
            result.emplace_back();
        else
            result.back() += c;
    }
    return result;
}

class MenuContentBadInputTest : public MenuContentTest {
protected:
    /// Puts one text wherever a file can put one. The identifiers stay, so that entries can be told apart.
    void fillWith(const std::string& text)
    {
        status.headline = text;
        status.detail = text;
        status.memoryReliefTip = text;
        targetRows.resize(4);
        targetRows.push_back({text, TargetRow::State::paused, "Eased back"});
        status.quarantine = {setAsideProcess("process", text), setAsideProcess("agent", text)};
        for (QuarantinedEntry& entry : status.quarantine)
            entry.reason = "because " + text;
        status.quarantine[1].kind = "launchd";
    }

    void expectBoundedPlainLines() const
    {
        const MenuContent shown = content();
        for (const std::string& line : lines(shown)) {
            EXPECT_TRUE(isHarmlessLine(line)) << line;
            EXPECT_LE(codePoints(line), longestLine);
        }
        EXPECT_TRUE(isHarmlessLine(shown.header.memoryTip)) << shown.header.memoryTip;
        EXPECT_LE(codePoints(shown.header.memoryTip), longestFullText);
        for (const MenuContent::SetAsideEntry& entry : shown.setAside->entries) {
            EXPECT_NE(entry.label, "");
            EXPECT_LE(splitLines(entry.fullText).size(), 3u);
            for (const std::string& line : splitLines(entry.fullText)) {
                EXPECT_TRUE(isHarmlessLine(line)) << line;
                EXPECT_LE(codePoints(line), longestFullText);
            }
        }
    }
};

TEST_F(MenuContentBadInputTest, AThousandEntriesSetAsideAreFourRowsAndACount)
{
    for (int i = 0; i < 1000; ++i)
        status.quarantine.push_back(setAsideProcess("id-" + std::to_string(i), "ollama-" + std::to_string(i)));
    const auto setAside = content().setAside;
    ASSERT_TRUE(setAside);
    ASSERT_EQ(setAside->entries.size(), MenuContent::mostSetAside);
    for (std::size_t i = 0; i < setAside->entries.size(); ++i)
        EXPECT_EQ(setAside->entries[i].id, Text("id-" + std::to_string(i)));
    EXPECT_EQ(setAside->heading, "SET ASIDE (1000)");
    EXPECT_EQ(setAside->clearAll, "Clear all (1000)");
}

TEST_F(MenuContentBadInputTest, AThousandMoreTargetsAreAFewRowsAndACount)
{
    for (int i = 0; i < 1000; ++i)
        targetRows.push_back({"model-" + std::to_string(i), TargetRow::State::paused, "Eased back"});
    const MenuContent::Targets targets = content().targets;
    ASSERT_EQ(targets.rows.size(), MenuContent::mostTargets);
    EXPECT_EQ(targets.rows[3].name, "llama.cpp");
    EXPECT_EQ(targets.rows[4].name, "model-0");
    EXPECT_EQ(targets.moreRows, 1004 - MenuContent::mostTargets);
    EXPECT_EQ(targets.honesty, "No listed AI is open. Other AI is not eased.");
}

TEST_F(MenuContentBadInputTest, MarkupStaysLetterForLetter)
{
    constexpr const char* markup = "<b>load</b>&amp;<img/src=x>";
    fillWith(markup);
    const MenuContent shown = content();
    EXPECT_EQ(shown.header.headline, markup);
    EXPECT_EQ(shown.header.detail, markup);
    EXPECT_EQ(shown.header.memoryTip, markup);
    EXPECT_EQ(shown.targets.rows[4].name, markup);
    EXPECT_EQ(shown.setAside->entries[0].label, "src=x>");
    EXPECT_EQ(shown.setAside->entries[0].fullText, std::string("src=x>\n") + markup + "\nbecause " + markup);
    EXPECT_EQ(shown.setAside->entries[1].label, markup);
}

TEST_F(MenuContentBadInputTest, LineBreaksControlCharactersAndReorderingMarksDoNotReachTheScreen)
{
    fillWith("a\r\n\x1b[31mb\u202Ec\u2028d\u0085\u009B\0e\u2066f\x7f"s);
    expectBoundedPlainLines();
    const MenuContent shown = content();
    constexpr const char* line = "a [31mbc d ef";
    EXPECT_EQ(shown.header.headline, line);
    EXPECT_EQ(shown.header.detail, line);
    EXPECT_EQ(shown.header.memoryTip, line);
    EXPECT_EQ(shown.targets.rows[4].name, line);
    EXPECT_EQ(shown.setAside->entries[0].label, "a");
    EXPECT_EQ(shown.setAside->entries[0].fullText, std::string("a\n") + line + "\nbecause " + line);
    EXPECT_EQ(shown.setAside->entries[1].label, line);
    EXPECT_EQ(shown.setAside->entries[1].fullText, std::string(line) + "\nbecause " + line);
}

TEST_F(MenuContentBadInputTest, InvalidUtf8BecomesReplacementCharacters)
{
    fillWith("a\xFF\xE6\x97z");
    expectBoundedPlainLines();
    EXPECT_EQ(content().header.headline, "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(content().header.memoryTip, "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(content().targets.rows[4].name, "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(content().setAside->entries[0].label, "a\uFFFD\uFFFD\uFFFDz");
}

TEST_F(MenuContentBadInputTest, TextsOfAMegabyteAreCutAtTheirBounds)
{
    for (const char* unit : {"x", "日", "\u0301\u0316", "\xFF", "x ", "\u202E\nx"}) {
        std::string text;
        while (text.size() < 1'000'000)
            text += unit;
        fillWith(text);
        expectBoundedPlainLines();
    }
}

TEST_F(MenuContentBadInputTest, ALongCommandIsCutInItsRowAndWholeInTheFullText)
{
    const std::string command = "/opt/" + std::string(500, 'm');
    status.quarantine = {setAsideProcess("1", command)};
    const MenuContent::SetAsideEntry entry = content().setAside->entries[0];
    EXPECT_EQ(entry.label, std::string(longestLine - 1, 'm') + "…");
    EXPECT_EQ(entry.fullText, std::string(500, 'm') + "\n" + command + "\nlooped");
    status.quarantine[0].reason = std::string(1'000'000, 'r');
    EXPECT_EQ(splitLines(content().setAside->entries[0].fullText)[2], std::string(longestFullText - 1, 'r') + "…");
}

TEST_F(MenuContentBadInputTest, ALongTipKeepsMoreThanARowWould)
{
    status.memoryReliefTip = std::string(1'000'000, 't');
    EXPECT_EQ(content().header.memoryTip, std::string(longestFullText - 1, 't') + "…");
    status.headline = std::string(1'000'000, 'h');
    EXPECT_EQ(content().header.headline, std::string(longestLine - 1, 'h') + "…");
}

TEST_F(MenuContentBadInputTest, AnEntryKeepsTheIdentifierThatTheToolKnows)
{
    const std::string identifier = "a\n<b>\u202E\xFF" + std::string(5000, 'i');
    status.quarantine = {setAsideProcess(identifier)};
    EXPECT_EQ(content().setAside->entries[0].id.utf8(), identifier);
}

TEST_F(MenuContentBadInputTest, ACommandWithoutAReadableNameIsCalledByItsIdentifier)
{
    for (const char* command : {"  ", "\u202E ollama", "\x1b"}) {
        status.quarantine = {setAsideProcess("pid-7", command)};
        EXPECT_EQ(content().setAside->entries[0].label, "pid-7");
    }
    status.quarantine = {setAsideProcess(" ", "\u202E ollama")};
    EXPECT_EQ(content().setAside->entries[0].fullText, "ollama\nlooped") << "nor has it a readable identifier";
}

}  // namespace
}  // namespace quenchly
