#include "process_output.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

using Ids = std::vector<ProcessId>;
using States = std::map<ProcessId, std::string>;

TEST(ParsePgrepOutput, OneIdOnEachLine)
{
    EXPECT_EQ(parsePgrepOutput("412\n90210\n"), (Ids{412, 90210}));
}

TEST(ParsePgrepOutput, AscendingWhateverTheOrderPrinted)
{
    EXPECT_EQ(parsePgrepOutput("900\n7\n412\n"), (Ids{7, 412, 900}));
}

TEST(ParsePgrepOutput, LastLineWithoutItsEnd)
{
    EXPECT_EQ(parsePgrepOutput("412\n413"), (Ids{412, 413}));
}

TEST(ParsePgrepOutput, BlanksAroundAnIdAndEmptyLines)
{
    EXPECT_EQ(parsePgrepOutput("\n  412 \r\n\n\t413\n\n"), (Ids{412, 413}));
}

TEST(ParsePgrepOutput, WhatIsNoIdIsLeftOut)
{
    EXPECT_EQ(parsePgrepOutput("pgrep: no\n-5\n0\n12a\n99999999999999999999\n+3\n\xff\n8\n"), (Ids{8}));
}

TEST(ParsePgrepOutput, NothingFound)
{
    EXPECT_EQ(parsePgrepOutput(""), Ids());
    EXPECT_EQ(parsePgrepOutput("\n"), Ids());
}

TEST(ParsePsStates, AlignedColumns)
{
    EXPECT_EQ(parsePsStates("  412 Ss+\n90210 T\n    7 R\n"), (States{{7, "R"}, {412, "Ss+"}, {90210, "T"}}));
}

TEST(ParsePsStates, LinesWithFewerThanTwoFieldsAreSkipped)
{
    EXPECT_EQ(parsePsStates("412\n\n   \n413 \n414 S"), (States{{414, "S"}}));
}

TEST(ParsePsStates, FurtherFieldsAreIgnored)
{
    EXPECT_EQ(parsePsStates("412\tT\tsomething else\r\n"), (States{{412, "T"}}));
}

TEST(ParsePsStates, ALineWithoutAnIdIsSkipped)
{
    EXPECT_EQ(parsePsStates("ps: 5: no such process\nPID STAT\n6 S\n"), (States{{6, "S"}}));
}

}  // namespace
}  // namespace quenchly
