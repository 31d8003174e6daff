#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "process_table.h"

extern char** environ;

namespace quenchly {
namespace {

/// Sleeps under a command line that no other process on the machine has, this test's next run included.
class Sleeper {
public:
    Sleeper()
    {
        std::string duration = seconds();
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

    /// What finds it by its command line.
    static std::string pattern() { return "sleep " + seconds() + "$"; }

    ProcessId id() const { return id_; }
    void stop() const
    {
        kill(id_, SIGSTOP);
        waitpid(id_, nullptr, WUNTRACED);
    }

private:
    static std::string seconds() { return "864100" + std::to_string(getpid()); }

    std::string name_ = "sleep";
    pid_t id_ = 0;
};

bool contains(const std::vector<ProcessId>& ids, ProcessId id)
{
    return std::ranges::binary_search(ids, id);
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
    const Sleeper sleeper;
    EXPECT_TRUE(contains(table_->named("sleep"), sleeper.id()));
    EXPECT_EQ(table_->matching(Sleeper::pattern()), std::vector<ProcessId>{sleeper.id()});
    EXPECT_FALSE(contains(table_->named("slee"), sleeper.id()));
}

TEST_F(ProcessTableMacos, AnswersFromOneListingUntilTheNextRefresh)
{
    EXPECT_TRUE(table_->matching(Sleeper::pattern()).empty());
    const Sleeper sleeper;
    EXPECT_TRUE(table_->matching(Sleeper::pattern()).empty());
    table_->beginRefresh();
    EXPECT_EQ(table_->matching(Sleeper::pattern()), std::vector<ProcessId>{sleeper.id()});
}

TEST_F(ProcessTableMacos, TellsAStoppedProcessFromASleepingOne)
{
    const Sleeper sleeping;
    const Sleeper stopped;
    stopped.stop();
    const auto states = table_->states({sleeping.id(), stopped.id(), 2'000'000'000});
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
