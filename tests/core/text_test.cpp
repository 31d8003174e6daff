#include "text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "test_files.h"

namespace quenchly {
namespace {

TEST(Text, CanonicallyEquivalentTextsAreEqual)
{
    const std::pair<const char*, const char*> rows[] = {
        {"é", "e\u0301"},
        {"ÅÅ", "\u212BA\u030A"},  // the Angstrom sign
        {"각", "\u1100\u1161\u11A8"},
        {"\u1E69", "s\u0307\u0323"},  // two marks, in either order
        {"s\u0323\u0307", "s\u0307\u0323"},
        {"\u1F82", "\u03B1\u0313\u0300\u0345"},
        {"\u03A9", "\u2126"},  // the Ohm sign
    };
    for (const auto& [a, b] : rows) {
        EXPECT_EQ(Text(a), Text(b));
        EXPECT_EQ(Text(a) <=> Text(b), std::strong_ordering::equal);
        EXPECT_NE(Text(a).utf8(), Text(b).utf8());
    }
}

TEST(Text, TextsThatOnlyLookAlikeDiffer)
{
    const std::pair<const char*, const char*> rows[] = {
        {"a", "A"},         {"a", "\u0430"},  // Cyrillic
        {"fi", "\uFB01"},                     // only compatible, not canonical
        {"1", "\u00B9"},    {"a b", "a\u00A0b"},
        {"ab", "a\u200Db"}, {"a\u0301\u0300", "a\u0300\u0301"},  // marks of one class keep their order
        {"a", "a "},        {"", "\u200B"},
        {"é", "e"},
    };
    for (const auto& [a, b] : rows) {
        EXPECT_NE(Text(a), Text(b));
        EXPECT_NE(Text(a) <=> Text(b), std::strong_ordering::equal);
    }
    EXPECT_NE(Text(std::string("a\0b", 3)), Text("a"));
    EXPECT_EQ(Text(std::string("é\0b", 4)), Text(std::string("e\u0301\0b", 5)));
    EXPECT_NE(Text(std::string("é\0b", 4)), Text(std::string("e\u0301\0c", 5)));
}

TEST(Text, InvalidUtf8ComparesByItsBytes)
{
    EXPECT_EQ(Text("\xFF"), Text("\xFF"));
    EXPECT_NE(Text("\xFF"), Text("\xFE"));
    EXPECT_NE(Text("é\xFF"), Text("e\u0301\xFF"));
    EXPECT_NE(Text("\xFF"), Text("\uFFFD"));
}

TEST(Text, TheOrderAgreesWithEquality)
{
    const Text texts[] = {"", "a", "ab", "b", "e\u0301", "é\u0323", "z", "각", "\xFF"};
    for (const Text& a : texts) {
        for (const Text& b : texts) {
            EXPECT_EQ((a <=> b) == std::strong_ordering::equal, a == b);
            EXPECT_EQ(a<b, b> a);
        }
    }
    EXPECT_LT(Text("a"), Text("b"));
    EXPECT_LT(Text("é"), Text("e\u0302"));
}

TEST(Text, ALongRunOfMarksIsComparedWithoutTrouble)
{
    std::string below;
    std::string above;
    for (int i = 0; i < 250'000; ++i) {
        below += "\u0316";
        above += "\u0301";
    }
    EXPECT_EQ(Text("a" + above + below), Text("a" + below + above));
    EXPECT_NE(Text("a" + above + below), Text("a" + above + below + "\u0301"));
}

TEST(Text, LettersOfEveryScriptAreLowered)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"MacBookPro18,3", "macbookpro18,3"},
        {"ÄÖÜ É", "äöü é"},
        {"ΑΒΓ", "αβγ"},
        {"ПРИВЕТ", "привет"},
        {"ollama", "ollama"},
        {"I", "i"},
        {"İ", "i\u0307"},
        {"ß", "ß"},
        {"日本", "日本"},
        {"A\xFF"
         "B",
         "a\xFF"
         "b"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(lowercased(text), expected) << text;
}

TEST(Text, TrimmingDropsWhiteSpaceAtTheEndsOnly)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"   ", ""},
        {"a", "a"},
        {" a b ", "a b"},
        {"\t\r\n\v\fa\n", "a"},
        {"\u00A0\u2003\u3000a\u2028\u2029\u0085", "a"},
        {"\u200Ba", "\u200Ba"},
        {" \xFF ", "\xFF"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(trimmed(text), expected) << text;
}

TEST(Text, TrimmingBlanksKeepsLineEnds)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {" \t ", ""},
        {" a b\t", "a b"},
        {"\u00A0\u3000a\u2003", "a"},
        {" \na\n ", "\na\n"},
        {"\u2028", "\u2028"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(trimmedBlanks(text), expected) << text;
}

TEST(Text, TheFirstWordEndsAtWhiteSpaceOfAnyKind)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"  ", ""},
        {"one", "one"},
        {"one two", "one"},
        {"  one  two", "one"},
        {"\tone\ntwo", "one"},
        {"one\u3000two", "one"},
        {"one\u2028two", "one"},
        {"one\u200Btwo", "one\u200Btwo"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(firstWord(text), expected) << text;
}

TEST(Text, ValidityIsThatOfUtf8)
{
    for (const char* text : {"", "abc", "é", "日本", "😀", "\uFFFE", "\U0010FFFF"})
        EXPECT_TRUE(isValidUtf8(text)) << text;
    for (const char* text :
         {"\x80", "\xC3", "a\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF", "\xE6\x97"})
        EXPECT_FALSE(isValidUtf8(text)) << ::testing::PrintToString(std::string(text));
    EXPECT_TRUE(isValidUtf8(std::string_view("\0", 1)));
}

TEST(Text, EveryOccurrenceIsReplaced)
{
    EXPECT_EQ(replacingAll("a-b-c", "-", "+"), "a+b+c");
    EXPECT_EQ(replacingAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replacingAll("abc", "x", "y"), "abc");
    EXPECT_EQ(replacingAll("abc", "abc", ""), "");
    EXPECT_EQ(replacingAll("ab", "a", "aa"), "aab");
    EXPECT_EQ(replacingAll("", "a", "b"), "");
    EXPECT_EQ(replacingAll("abc", "", "x"), "abc");
}

TEST(DisplayLine, WhatReadsAsOneLineAlreadyStaysAsItIs)
{
    for (const char* text : {"", "plain", "<b>bold</b> &amp;", "Cafe\u0301 日本 😀", "a b c", "\u200Dzero width"})
        EXPECT_EQ(displayLine(text), text) << text;
}

TEST(DisplayLine, WhiteSpaceAndControlCharactersBecomeSingleBlanks)
{
    const std::pair<const char*, const char*> rows[] = {
        {"a\nb", "a b"},
        {"a\r\n\tb", "a b"},
        {"a  b", "a b"},
        {"  a  ", "a"},
        {"a\x1b[31mb", "a [31mb"},
        {"a\x07\x08"
         "b",
         "a b"},
        {"a\u2028b", "a b"},
        {"a\u0085b", "a b"},
        {"a\u009Bb", "a b"},
        {"a\x7f", "a"},
        {"\n\n", ""},
        {"a\u3000b", "a b"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(displayLine(text), expected) << text;
    EXPECT_EQ(displayLine(std::string_view("a\0b", 3)), "a b");
}

TEST(DisplayLine, MarksThatReorderTheirSurroundingsAreDropped)
{
    for (const char* mark : {"\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066",
                             "\u2067", "\u2068", "\u2069"})
        EXPECT_EQ(displayLine(std::string("a") + mark + "b"), "ab");
    EXPECT_EQ(displayLine("שלום"), "שלום");
}

TEST(DisplayLine, EachInvalidByteBecomesAReplacementCharacter)
{
    EXPECT_EQ(displayLine("a\xFF"
                          "b"),
              "a\uFFFDb");
    EXPECT_EQ(displayLine("\xE6\x97"), "\uFFFD\uFFFD");
}

TEST(DisplayLine, ALongTextEndsInAnEllipsisAtTheLimit)
{
    EXPECT_EQ(displayLine("abcde", 5), "abcde");
    EXPECT_EQ(displayLine("abcdef", 5), "abcd…");
    EXPECT_EQ(displayLine("日本語日本語", 5), "日本語日…");
    EXPECT_EQ(displayLine("abcd  ", 4), "abcd");
    EXPECT_EQ(displayLine("abcd f", 5), "abcd…");
    EXPECT_EQ(displayLine("abcd f", 6), "abcd f");
    EXPECT_EQ(displayLine(std::string(1 << 20, 'x')), std::string(399, 'x') + "…");
    EXPECT_EQ(displayLine(std::string(1 << 20, '\n') + "x"), "x");
}

}  // namespace
}  // namespace quenchly
