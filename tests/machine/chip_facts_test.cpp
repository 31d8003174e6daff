#include "chip_facts.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>

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

TEST(ChipLabelShell, ErrorsAreNoOutputAndNeverBlock)
{
    EXPECT_EQ(ChipLabel::shell("echo problem >&2"), "");
    EXPECT_EQ(ChipLabel::shell("head -c 300000 /dev/zero >&2; echo done"), "done");
}

TEST(ChipLabelShell, ALongOutputIsReadToItsEnd)
{
    EXPECT_EQ(ChipLabel::shell("head -c 300000 /dev/zero | tr '\\0' x").size(), 300000u);
}

TEST(ChipLabelShell, OutputThatIsNotUtf8GivesNothing)
{
    EXPECT_EQ(ChipLabel::shell("printf 'a\\377b'"), "");
    EXPECT_EQ(ChipLabel::shell("printf 'caf\\303\\251'"), "café");
}

TEST(ChipLabelShell, NothingIsLeftOpenOrUnwaited)
{
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/dev/fd"), std::filesystem::directory_iterator());
    };
    const auto before = openDescriptors();
    for (int i = 0; i < 5; ++i)
        ChipLabel::shell("echo x; exit 1");
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(ChipLabel, ThisMachinesLabelIsThatOfItsFacts)
{
    EXPECT_EQ(ChipLabel::machine(), ChipLabel::label(ChipLabel::facts()));
}

}  // namespace
}  // namespace quenchly
