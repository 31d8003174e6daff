#include "tool_output.h"

#include <gtest/gtest.h>

#include "own_process.h"

namespace quenchly {
namespace {

TEST(RunTool, StandardOutputAndExitStatus)
{
    const auto result = runTool({"/bin/sh", "-c", "echo out; echo err >&2; exit 3"});
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->standardOutput, "out\n");
    EXPECT_EQ(result->exitStatus, 3);
}

TEST(RunTool, OutputLargerThanAPipe)
{
    const auto result = runTool({"/bin/sh", "-c", "head -c 300000 /dev/zero"});
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->standardOutput.size(), 300000U);
}

TEST(RunTool, ErrorsThatNobodyReadsDoNotBlock)
{
    const auto result = runTool({"/bin/sh", "-c", "head -c 300000 /dev/zero >&2; echo done"});
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->standardOutput, "done\n");
}

TEST(RunTool, NothingWhenItCannotBeStarted)
{
    EXPECT_FALSE(runTool({"/nowhere/tool"}).has_value());
    EXPECT_FALSE(runTool({"/bin/echo", std::string("a\0b", 3)}).has_value());
}

TEST(RunTool, DeathBySignalIsNoExitStatus)
{
    const auto result = runTool({"/bin/sh", "-c", "kill -9 $$"});
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->exitStatus, -1);
}

TEST(RunTool, LeavesNoDescriptorAndNoChildBehind)
{
    const int before = testing::openDescriptors();
    for (int i = 0; i < 20; ++i)
        runTool({i % 2 == 0 ? "/bin/true" : "/nowhere/tool"});
    EXPECT_EQ(testing::openDescriptors(), before);
    EXPECT_TRUE(testing::hasNoChild());
}

}  // namespace
}  // namespace quenchly
