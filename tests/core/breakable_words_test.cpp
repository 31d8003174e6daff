#include "breakable_words.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

const std::string breakPlace = "\u200B";

std::string run(std::size_t length)
{
    return std::string(length, 'x');
}

TEST(BreakableWords, WhatFitsALineStaysAsItIs)
{
    for (const std::string& text : {std::string(), run(40), run(40) + " " + run(40), run(40) + "\n" + run(40)})
        EXPECT_EQ(withBreakableWords(text), text);
}

TEST(BreakableWords, ALongWordCanBreakAfterEveryFortyCharacters)
{
    EXPECT_EQ(withBreakableWords(run(41)), run(40) + breakPlace + "x");
    EXPECT_EQ(withBreakableWords(run(80)), run(40) + breakPlace + run(40));
    EXPECT_EQ(withBreakableWords("a " + run(81) + " b"), "a " + run(40) + breakPlace + run(40) + breakPlace + "x b");
}

TEST(BreakableWords, ACharacterOfSeveralBytesCountsOnceAndIsNeverSplit)
{
    std::string forty;
    for (int i = 0; i < 40; ++i)
        forty += "語";
    EXPECT_EQ(withBreakableWords(forty), forty);
    EXPECT_EQ(withBreakableWords(forty + "語"), forty + breakPlace + "語");
}

TEST(UnbrokenPrefixes, TheHyphenOfAShortPrefixIsJoinedToTheWord)
{
    const std::string joiner = "\u2060";
    EXPECT_EQ(withUnbrokenPrefixes("I-unload"), "I-" + joiner + "unload");
    EXPECT_EQ(withUnbrokenPrefixes("kung ii-install, “I-on”"), "kung ii-" + joiner + "install, “I-" + joiner + "on”");
    EXPECT_EQ(withUnbrokenPrefixes("nag-a-update"), "nag-a-" + joiner + "update");
}

TEST(UnbrokenPrefixes, OtherHyphensStay)
{
    for (const char* text :
         {"", "-", "I-", "I - on", "-v", "--bar", "Sabay-sabay", "gpt4o-mini", "3-bit", "a-3", "語-a"})
        EXPECT_EQ(withUnbrokenPrefixes(text), text);
}

}  // namespace
}  // namespace quenchly
