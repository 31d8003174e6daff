#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "process_table.h"

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
