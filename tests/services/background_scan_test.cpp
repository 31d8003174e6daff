#include "background_scan.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <set>

namespace quenchly {
namespace {

using Rows = std::vector<TargetRow>;

constexpr int deadlineMilliseconds = 30'000;

/// What the tables of a test see and share, on whatever threads they are used.
class Stage {
public:
    void enter()
    {
        std::unique_lock lock(mutex_);
        ++scans_;
        mostInside_ = std::max(mostInside_, ++inside_);
        threads_.insert(std::this_thread::get_id());
        changed_.notify_all();
        changed_.wait(lock, [this] { return !isHeld_; });
        --inside_;
        changed_.notify_all();
    }
    void hold(bool isHeld)
    {
        const std::lock_guard lock(mutex_);
        isHeld_ = isHeld;
        changed_.notify_all();
    }
    bool awaitScans(int count)
    {
        return await([&] { return scans_ >= count; });
    }
    bool awaitNoTable()
    {
        return await([&] { return present_ == 0; });
    }
    void addTable()
    {
        const std::lock_guard lock(mutex_);
        ++tables_;
        ++present_;
    }
    void removeTable()
    {
        const std::lock_guard lock(mutex_);
        --present_;
        changed_.notify_all();
    }

    int scans() const { return locked(scans_); }
    int tables() const { return locked(tables_); }
    int inside() const { return locked(inside_); }
    int mostInside() const { return locked(mostInside_); }
    std::set<std::thread::id> threads() const { return locked(threads_); }

private:
    template <typename Condition>
    bool await(const Condition& holds)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::milliseconds(deadlineMilliseconds), holds);
    }

    template <typename Value>
    Value locked(const Value& value) const
    {
        const std::lock_guard lock(mutex_);
        return value;
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool isHeld_ = false;
    int scans_ = 0;
    int tables_ = 0;   // made
    int present_ = 0;  // not yet destroyed
    int inside_ = 0;
    int mostInside_ = 0;
    std::set<std::thread::id> threads_;
};

/// Every process runs; a listing takes as long as the stage holds it.
class SlowTable final : public ProcessTable {
public:
    explicit SlowTable(std::shared_ptr<Stage> stage) : stage_(std::move(stage)) { stage_->addTable(); }
    ~SlowTable() override { stage_->removeTable(); }
    SlowTable(const SlowTable&) = delete;
    SlowTable& operator=(const SlowTable&) = delete;

    void beginRefresh() override { stage_->enter(); }
    std::vector<ProcessId> named(const std::string&) override { return {10}; }
    std::vector<ProcessId> matching(const std::string&) override { return {10}; }
    std::map<ProcessId, std::string> states(const std::vector<ProcessId>&) override { return {}; }

private:
    std::shared_ptr<Stage> stage_;
};

TargetScanner::Situation pausing(const std::string& label)
{
    return {.paused = {{.label = label}}};
}

class BackgroundScanTest : public ::testing::Test {
protected:
    /// A scan that is left behind may outlive the test.
    std::shared_ptr<Stage> shared = std::make_shared<Stage>();
    Stage& stage = *shared;
    std::unique_ptr<BackgroundScan> scan = make();
    std::vector<Rows> results;
    std::set<std::thread::id> deliveredOn;

    std::unique_ptr<BackgroundScan> make()
    {
        auto made = std::make_unique<BackgroundScan>([shared = shared] { return std::make_unique<SlowTable>(shared); });
        QObject::connect(made.get(), &BackgroundScan::finished, [this](const Rows& rows) {
            results.push_back(rows);
            deliveredOn.insert(std::this_thread::get_id());
        });
        return made;
    }

    bool awaitResults(std::size_t count)
    {
        return QTest::qWaitFor([&] { return results.size() >= count; }, deadlineMilliseconds);
    }

    static void handleEvents()
    {
        for (int round = 0; round < 10; ++round)
            QCoreApplication::processEvents();
    }
};

TEST_F(BackgroundScanTest, TheRowsOfAScanAreDelivered)
{
    scan->request(pausing("mymodel"));
    EXPECT_TRUE(results.empty());
    ASSERT_TRUE(awaitResults(1));
    const Rows expected{{"Ollama", TargetRow::State::running, "running"},
                        {"MLX LM Server", TargetRow::State::running, "running"},
                        {"LM Studio", TargetRow::State::running, "running"},
                        {"llama.cpp", TargetRow::State::running, "running"},
                        {"mymodel", TargetRow::State::paused, "Eased back"}};
    EXPECT_EQ(results[0], expected);
}

TEST_F(BackgroundScanTest, ScansRunOnAnotherThreadAndResultsComeBackOnTheOwners)
{
    for (std::size_t count = 1; count <= 5; ++count) {
        scan->request({});
        ASSERT_TRUE(awaitResults(count));
    }
    EXPECT_FALSE(stage.threads().contains(std::this_thread::get_id()));
    EXPECT_EQ(deliveredOn, std::set{std::this_thread::get_id()});
    EXPECT_EQ(stage.tables(), 1);
}

TEST_F(BackgroundScanTest, WaitingDeliversEverythingAskedForBeforeItReturns)
{
    for (std::size_t round = 0; round < 50; ++round) {
        scan->request(pausing("first"));
        scan->request(pausing("second"));
        scan->waitFor(std::chrono::milliseconds(deadlineMilliseconds));
        ASSERT_EQ(results.size(), 2 * (round + 1));
        EXPECT_EQ(results.back().back().name, Text("second"));
    }
    EXPECT_EQ(deliveredOn, std::set{std::this_thread::get_id()});
    handleEvents();
    EXPECT_EQ(results.size(), 100U) << "delivered twice";
}

TEST_F(BackgroundScanTest, AScanThatTakesLongerThanTheWaitIsDeliveredLater)
{
    stage.hold(true);
    scan->request(pausing("slow"));
    scan->waitFor(std::chrono::milliseconds(1));
    EXPECT_TRUE(results.empty());
    stage.hold(false);
    ASSERT_TRUE(awaitResults(1));
    EXPECT_EQ(results[0].back().name, Text("slow"));
}

TEST_F(BackgroundScanTest, AListenerMayDestroyItWhileItIsWaitedFor)
{
    QObject::connect(scan.get(), &BackgroundScan::finished, [this] { scan.reset(); });
    scan->request({});
    scan->request({});
    scan->waitFor(std::chrono::milliseconds(deadlineMilliseconds));
    EXPECT_EQ(results.size(), 1U);
    EXPECT_EQ(scan, nullptr);
}

TEST_F(BackgroundScanTest, NothingIsDoneUntilAScanIsAskedFor)
{
    handleEvents();
    EXPECT_EQ(stage.tables(), 0);
    EXPECT_EQ(stage.scans(), 0);
}

TEST_F(BackgroundScanTest, RequestsDuringAScanLeaveOneMoreScanOfTheNewestSituation)
{
    stage.hold(true);
    scan->request(pausing("first"));
    ASSERT_TRUE(stage.awaitScans(1));
    for (int number = 0; number < 1000; ++number) {
        scan->request(pausing("model" + std::to_string(number)));
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(results.empty());
    EXPECT_EQ(stage.scans(), 1);
    stage.hold(false);
    ASSERT_TRUE(awaitResults(2));
    handleEvents();
    EXPECT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0].back().name, Text("first"));
    EXPECT_EQ(results[1].back().name, Text("model999"));
    EXPECT_EQ(stage.scans(), 2);
    EXPECT_EQ(stage.mostInside(), 1);
}

TEST_F(BackgroundScanTest, ARequestBetweenTheEndOfAScanAndItsDeliveryIsNotLost)
{
    for (std::size_t round = 0; round < 50; ++round) {
        scan->request(pausing("before"));
        ASSERT_TRUE(stage.awaitScans(static_cast<int>(2 * round) + 1));
        scan->request(pausing("after"));
        ASSERT_TRUE(awaitResults(2 * round + 2));
        EXPECT_EQ(results.back().back().name, Text("after"));
    }
    EXPECT_EQ(stage.mostInside(), 1);
}

TEST_F(BackgroundScanTest, AListenerMayAskForTheNextScan)
{
    QObject::connect(scan.get(), &BackgroundScan::finished, [this] {
        if (results.size() < 20)
            scan->request(pausing("model" + std::to_string(results.size())));
    });
    scan->request(pausing("model0"));
    ASSERT_TRUE(awaitResults(20));
    handleEvents();
    for (std::size_t number = 0; number < results.size(); ++number)
        EXPECT_EQ(results[number].back().name, Text("model" + std::to_string(number)));
    EXPECT_EQ(stage.mostInside(), 1);
}

TEST_F(BackgroundScanTest, AListenerMayDestroyIt)
{
    QObject::connect(scan.get(), &BackgroundScan::finished, [this] { scan.reset(); });
    stage.hold(true);
    scan->request({});
    scan->request({});
    stage.hold(false);
    ASSERT_TRUE(awaitResults(1));
    handleEvents();
    EXPECT_EQ(results.size(), 1U);
    EXPECT_EQ(stage.inside(), 0);
}

TEST_F(BackgroundScanTest, DestroyingItDuringAScanDeliversNothingAndStartsNoOther)
{
    stage.hold(true);
    scan->request(pausing("running"));
    ASSERT_TRUE(stage.awaitScans(1));
    scan->request(pausing("remembered"));
    std::thread releaser([this] { stage.hold(false); });
    scan.reset();
    releaser.join();
    EXPECT_TRUE(stage.awaitNoTable());
    handleEvents();
    EXPECT_EQ(stage.scans(), 1);
    EXPECT_TRUE(results.empty());
}

TEST_F(BackgroundScanTest, DestroyingItLeavesAScanBehindThatDoesNotEnd)
{
    stage.hold(true);
    scan->request(pausing("running"));
    ASSERT_TRUE(stage.awaitScans(1));
    scan->request(pausing("remembered"));
    scan.reset();
    EXPECT_EQ(stage.inside(), 1);
    stage.hold(false);
    EXPECT_TRUE(stage.awaitNoTable());
    handleEvents();
    EXPECT_EQ(stage.scans(), 1);
    EXPECT_TRUE(results.empty());
}

TEST_F(BackgroundScanTest, DestroyingItAtAnyMomentIsSafe)
{
    for (int round = 0; round < 300; ++round) {
        scan = make();
        const int before = stage.scans();
        scan->request(pausing("a"));
        if (round % 3 == 1)
            QCoreApplication::processEvents();
        if (round % 3 == 2)
            stage.awaitScans(before + 1);
        scan->request(pausing("b"));
    }
    scan.reset();
    EXPECT_TRUE(stage.awaitNoTable());
    EXPECT_EQ(stage.inside(), 0);
}

TEST_F(BackgroundScanTest, NoThreadRemainsAfterAScan)
{
    const std::filesystem::path tasks = "/proc/self/task";
    if (!std::filesystem::exists(tasks))
        GTEST_SKIP() << "threads cannot be counted";
    const auto threads = [&] {
        const std::filesystem::directory_iterator all(tasks);
        return std::distance(begin(all), end(all));
    };
    const auto before = threads();
    scan->request({});
    ASSERT_TRUE(awaitResults(1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return threads() == before; }, deadlineMilliseconds));
}

TEST_F(BackgroundScanTest, ItsResultsCanBeCarriedThroughAQueue)
{
    Rows carried;
    QObject receiver;
    QObject::connect(
        scan.get(), &BackgroundScan::finished, &receiver, [&](const Rows& rows) { carried = rows; },
        Qt::QueuedConnection);
    scan->request(pausing("mymodel"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !carried.empty(); }, deadlineMilliseconds));
    EXPECT_EQ(carried, results.at(0));
}

TEST(TargetScanOfThisMachine, TheRealTableGivesTheKnownRows)
{
    BackgroundScan scan(makeProcessTable);
    QSignalSpy spy(&scan, &BackgroundScan::finished);
    for (int round = 0; round < 3; ++round) {
        scan.request(pausing("no such model"));
        ASSERT_TRUE(spy.wait(deadlineMilliseconds));
        const auto rows = spy.takeFirst().at(0).value<Rows>();
        ASSERT_EQ(rows.size(), 5U);
        EXPECT_EQ(rows[0].name, Text("Ollama"));
        EXPECT_EQ(rows[4], (TargetRow{"no such model", TargetRow::State::unknown, "Idle"}));
    }
}

}  // namespace
}  // namespace quenchly
