#include "chip_facts.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

TEST(ChipLabelShell, GivesTheTrimmedStandardOutput)
{
    EXPECT_EQ(ChipLabel::shell("echo hello"), "hello");
    EXPECT_EQ(ChipLabel::shell("printf ' \\n a  b \\n\\n'"), "a  b");
    EXPECT_EQ(ChipLabel::shell("echo one; echo two"), "one\ntwo");
    EXPECT_EQ(ChipLabel::shell("true"), "");
}

TEST(ChipLabelShell, TheOutputOfAFailingCommandCounts)
{
    EXPECT_EQ(ChipLabel::shell("echo partial; exit 3"), "partial");
    EXPECT_EQ(ChipLabel::shell("kill -9 $$"), "");
    EXPECT_EQ(ChipLabel::shell("/nonexistent/command"), "");
}

TEST(ChipLabelShell, OutputThatIsNotUtf8GivesNothing)
{
    EXPECT_EQ(ChipLabel::shell("printf 'a\\377b'"), "");
    EXPECT_EQ(ChipLabel::shell("printf 'caf\\303\\251'"), "café");
}

TEST(ChipLabel, ThisMachinesLabelIsThatOfItsFacts)
{
    EXPECT_EQ(ChipLabel::machine(), ChipLabel::label(ChipLabel::facts()));
}

}  // namespace
}  // namespace quenchly
