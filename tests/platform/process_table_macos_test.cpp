#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "process_table.h"
#include "tool_output.h"

extern char** environ;

namespace quenchly {
namespace {

class Sleeper {
public:
    explicit Sleeper(std::string duration)
    {
        char* arguments[] = {name_.data(), duration.data(), nullptr};
        EXPECT_EQ(posix_spawnp(&id_, "sleep", nullptr, nullptr, arguments, environ), 0);
    }
    ~Sleeper()
    {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    Sleeper(const Sleeper&) = delete;
    Sleeper& operator=(const Sleeper&) = delete;

    ProcessId id() const { return id_; }
    void stop() const
    {
        kill(id_, SIGSTOP);
        waitpid(id_, nullptr, WUNTRACED);
    }

private:
    std::string name_ = "sleep";
    pid_t id_ = 0;
};

bool contains(const std::vector<ProcessId>& ids, ProcessId id)
{
    return std::ranges::binary_search(ids, id);
}

std::ptrdiff_t openDescriptors()
{
    std::filesystem::directory_iterator descriptors("/dev/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

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
    const auto before = openDescriptors();
    for (int i = 0; i < 20; ++i)
        runTool({i % 2 == 0 ? "/bin/true" : "/nowhere/tool"});
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

class ProcessTableMacos : public testing::Test {
protected:
    void SetUp() override
    {
        if (access("/usr/bin/pgrep", X_OK) != 0 || access("/bin/ps", X_OK) != 0)
            GTEST_SKIP() << "pgrep or ps is not installed";
    }

    std::unique_ptr<ProcessTable> table_ = makeProcessTable();
};

TEST_F(ProcessTableMacos, FindsAProcessByNameAndByCommandLine)
{
    const Sleeper sleeper("8641.25");
    EXPECT_TRUE(contains(table_->named("sleep"), sleeper.id()));
    EXPECT_EQ(table_->matching("sleep 8641[.]25"), std::vector<ProcessId>{sleeper.id()});
    EXPECT_FALSE(contains(table_->named("slee"), sleeper.id()));
}

TEST_F(ProcessTableMacos, AnswersFromOneListingUntilTheNextRefresh)
{
    EXPECT_TRUE(table_->matching("sleep 8641[.]5").empty());
    const Sleeper sleeper("8641.5");
    EXPECT_TRUE(table_->matching("sleep 8641[.]5").empty());
    table_->beginRefresh();
    EXPECT_EQ(table_->matching("sleep 8641[.]5"), std::vector<ProcessId>{sleeper.id()});
}

TEST_F(ProcessTableMacos, TellsAStoppedProcessFromASleepingOne)
{
    const Sleeper sleeping("8641");
    const Sleeper stopped("8641");
    stopped.stop();
    const auto states = table_->states({sleeping.id(), stopped.id(), 4'000'000});
    ASSERT_EQ(states.size(), 2U);
    EXPECT_EQ(states.at(stopped.id()).front(), 'T');
    EXPECT_NE(states.at(sleeping.id()).front(), 'T');
    EXPECT_TRUE(table_->states({}).empty());
}

TEST_F(ProcessTableMacos, ALabelIsNeverTakenForAnOption)
{
    EXPECT_TRUE(table_->named("-v").empty());
    EXPECT_TRUE(table_->matching("--help").empty());
    EXPECT_TRUE(table_->matching("(").empty());
}

}  // namespace
}  // namespace quenchly
