#include "command_line_expression.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <time.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace quenchly {
namespace {

constexpr std::size_t longestLine = std::size_t{128} * 1024;

bool isIn(const std::string& pattern, const std::string& line)
{
    return CommandLineExpression(pattern).isIn(line);
}

/// Drawn from two letters, so that expressions over them find much to follow and never the same twice.
std::string uglyLine()
{
    std::mt19937 random(1);
    std::string line;
    while (line.size() < longestLine)
        line += "ab"[random() % 2];
    return line;
}

/// Each is about as large as an expression may be, and none is in a line of "a" and "b".
const std::vector<std::string> uglyPatterns{
    "a[ab]{500}9", "[ab]*a[ab]{400}9", "(a?){250}9", "((a?b?)?){100}9", "(a|aa|aaa|aaaa){70}9",
    "a.{70}9",     "(.?){60}9",        "(a+a+)+9",   "a.*b.*9",         "(a.{70})*9$",
};

double processorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// A hundred times what it takes, a hundredth of what costs that multiply would take.
constexpr double muchTime = 20;

TEST(CommandLineExpression, IsFoundAnywhereInTheLine)
{
    EXPECT_TRUE(isIn("mlx_lm.server", "python3 -m mlx_lm.server --port 1"));
    EXPECT_TRUE(isIn("python3", "python3 -m"));
    EXPECT_TRUE(isIn("-m$", "python3 -m"));
    EXPECT_FALSE(isIn("Python3", "python3 -m"));
    EXPECT_FALSE(isIn("-m -m", "python3 -m"));
}

TEST(CommandLineExpression, TheEmptyOneIsInEveryLine)
{
    for (const std::string line : {"", "a", "two\nlines"})
        EXPECT_TRUE(isIn("", line));
}

TEST(CommandLineExpression, AnchorsStandForTheEndsOfTheWholeLine)
{
    EXPECT_TRUE(isIn("^one", "one\ntwo"));
    EXPECT_TRUE(isIn("two$", "one\ntwo"));
    EXPECT_FALSE(isIn("^two", "one\ntwo"));
    EXPECT_FALSE(isIn("one$", "one\ntwo"));
    EXPECT_FALSE(isIn("two$", "two\n"));
}

TEST(CommandLineExpression, ADotIsAnyOneCharacter)
{
    EXPECT_TRUE(isIn("^z.rich$", "z\xc3\xbcrich"));
    EXPECT_FALSE(isIn("^z..rich$", "z\xc3\xbcrich"));
    EXPECT_TRUE(isIn("^.$", "\xf0\x9f\x8c\xac"));
    EXPECT_TRUE(isIn("a.b", "a\nb"));
}

TEST(CommandLineExpression, BracketsHoldCharactersRangesAndClasses)
{
    EXPECT_TRUE(isIn("^[]a]+$", "a]]"));
    EXPECT_TRUE(isIn("^[^]a]$", "b"));
    EXPECT_TRUE(isIn("^[a-c-]+$", "c-b-a"));
    EXPECT_TRUE(isIn("^[[:digit:][:upper:]]+$", "9A"));
    EXPECT_TRUE(isIn("^[\xc3\xa0-\xc3\xbf]$", "\xc3\xbc"));
    EXPECT_FALSE(isIn("[^a-z]", "azm"));
}

TEST(CommandLineExpression, ABackslashTakesASignAsItStands)
{
    EXPECT_TRUE(isIn("^a\\.b\\(c\\)\\[d\\]\\{2\\}\\*\\+\\?\\|\\^\\$\\\\$", "a.b(c)[d]{2}*+?|^$\\"));
    EXPECT_FALSE(isIn("^a\\.b$", "axb"));
}

TEST(CommandLineExpression, WhatIsNoneIsInNoLine)
{
    const std::string line = "( ) [ * a\\ \xff a";
    for (const std::string pattern : {"(", ")", "[", "a\\", "*", "a|*b", "[[:nothing:]]", "a{2,1}", "(a", "a)", "a)(b",
                                      "[z-a]", "\xff", "[\xff]", "(?i)a", "(?:a)"})
        EXPECT_FALSE(isIn(pattern, line)) << pattern;
}

TEST(CommandLineExpression, WhatGoesBeyondPosixIsInNoLine)
{
    for (const std::string pattern : {"(a)\\1", "\\1", "\\w", "\\d", "\\bab", "\\Qa\\E", "\\pL", "\\A", "\\C"})
        EXPECT_FALSE(isIn(pattern, "aab w d pL")) << pattern;
}

TEST(CommandLineExpression, OneWithAZeroByteIsInNoLine)
{
    EXPECT_FALSE(isIn(std::string("a\0", 2), "a"));
    EXPECT_FALSE(isIn(std::string("a|\0", 3), std::string("a\0", 2)));
}

TEST(CommandLineExpression, OneThatIsTooLargeIsInNoLine)
{
    const std::string line(2000, 'a');
    EXPECT_TRUE(isIn(std::string(500, 'a'), line));
    EXPECT_TRUE(isIn("a{500}", line));
    for (const std::string pattern : {"a{1000}", "a{1001}", "a{1,99999999999999999999}", "((a{1,255}){1,255}){1,255}",
                                      "(((a{9}){9}){9}){9}", "(.{10}){10}", "((a?)?){1000}"})
        EXPECT_FALSE(isIn(pattern, line)) << pattern;
}

TEST(CommandLineExpression, OneThatIsTooLongIsInNoLine)
{
    const std::size_t longest = CommandLineExpression::longestPattern;
    const std::string parentheses((longest - 1) / 2, '(');
    EXPECT_TRUE(isIn(parentheses + 'a' + std::string(parentheses.size(), ')'), "a"));
    EXPECT_FALSE(isIn(parentheses + "a||" + std::string(parentheses.size(), ')'), "a"));
    for (const char c : {'a', '(', '[', '*', '.', '|', '{', '\\'})
        EXPECT_FALSE(isIn(std::string(1'000'000, c), std::string(1'000'000, c))) << c;
}

TEST(CommandLineExpression, RepetitionsWithinRepetitionsAnswerAtOnce)
{
    const std::string x(longestLine, 'x');
    const double before = processorSeconds();
    for (const std::string pattern : {"((x?)?){1000}9.", "((x?)?){200}9.", "((((x+)+)+)+)+9.", "(x+x+)+9.",
                                      "((x*)*)*9.", "(x|xx|xxx){100}9.", "((x{1,9}){1,9}){1,5}9."})
        EXPECT_FALSE(isIn(pattern, x)) << pattern;
    EXPECT_LT(processorSeconds() - before, muchTime);
}

TEST(CommandLineExpression, TheWorstOnesAnswerForTheLongestLine)
{
    const std::string line = uglyLine();
    for (const std::string& pattern : uglyPatterns) {
        const CommandLineExpression expression(pattern);
        const double before = processorSeconds();
        EXPECT_FALSE(expression.isIn(line)) << pattern;
        EXPECT_LT(processorSeconds() - before, muchTime) << pattern;
        EXPECT_TRUE(expression.isIn(line + std::string(600, 'a') + '9')) << pattern;
    }
}

TEST(CommandLineExpression, TheWorstOnesKeepLittleMemory)
{
    const auto used = [] { return ::mallinfo2().uordblks + ::mallinfo2().hblkhd; };
    const std::string line = uglyLine();
    for (const std::string& pattern : uglyPatterns) {
        const std::size_t before = used();
        const CommandLineExpression expression(pattern);
        expression.isIn(line);
        EXPECT_LT(used(), before + std::size_t{2} * 1024 * 1024) << pattern;
    }
}

TEST(CommandLineExpression, NothingIsWrittenToStandardError)
{
    const std::string line = uglyLine();
    testing::internal::CaptureStderr();
    for (const std::string& pattern : uglyPatterns)
        isIn(pattern, line);
    for (const std::string& pattern :
         {std::string("("), std::string("\xff"), std::string("a{1001}"), std::string("(((.{9}){9}){9}){9}"),
          std::string(1024, 'a'), std::string(1024, '('), std::string(1'000'000, 'a')})
        isIn(pattern, line);
    std::string many;
    while (many.size() < 1'100'000)
        many += "a*";
    isIn(many, line);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace quenchly
