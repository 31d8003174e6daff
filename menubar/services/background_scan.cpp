#include "background_scan.h"

#include <QPointer>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>

namespace quenchly {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds longestWait{500};

}  // namespace

/// What the worker thread shares with the scan's owner, and keeps when it is left behind. Once it is, it touches
/// nothing of Qt and no object of the program that is destroyed at the program's end.
class BackgroundScan::Work {
public:
    Work(BackgroundScan* owner, TableFactory makeTable) : owner_(owner), makeTable_(std::move(makeTable)) {}

    /// On the worker thread.
    void scan(const TargetScanner::Situation& situation)
    {
        if (!table_)
            table_ = makeTable_();
        rows_ = TargetScanner::rows(*table_, situation);

        const std::lock_guard lock(mutex_);
        isDone_ = true;
        done_.notify_all();
        if (owner_ != nullptr)
            QMetaObject::invokeMethod(owner_, &BackgroundScan::collect, Qt::QueuedConnection);
    }

    /// Whether the scan has ended by then.
    bool waitUntil(Clock::time_point deadline)
    {
        std::unique_lock lock(mutex_);
        return done_.wait_until(lock, deadline, [this] { return isDone_; });
    }

    /// What the scan has found, once; none while it runs.
    std::optional<std::vector<TargetRow>> takeRows()
    {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(isDone_, false))
            return std::nullopt;
        return std::move(rows_);
    }

    /// From now on the owner is not called any more. Whether the scan has ended in time.
    bool leave()
    {
        {
            const std::lock_guard lock(mutex_);
            owner_ = nullptr;
        }
        return waitUntil(Clock::now() + longestWait);
    }

private:
    std::mutex mutex_;
    std::condition_variable done_;
    bool isDone_ = false;
    BackgroundScan* owner_;

    // The worker's own while it runs; joining it hands them over.
    TableFactory makeTable_;
    std::unique_ptr<ProcessTable> table_;
    std::vector<TargetRow> rows_;
};

BackgroundScan::BackgroundScan(TableFactory makeTable, QObject* parent)
    : QObject(parent), work_(std::make_shared<Work>(this, std::move(makeTable)))
{
}

BackgroundScan::~BackgroundScan()
{
    if (!worker_.joinable())
        return;
    if (work_->leave())
        worker_.join();
    else
        worker_.detach();
}

void BackgroundScan::request(TargetScanner::Situation situation)
{
    if (worker_.joinable())
        next_ = std::move(situation);
    else
        start(std::move(situation));
}

void BackgroundScan::start(TargetScanner::Situation situation)
{
    try {
        worker_ = std::thread([work = work_, situation = std::move(situation)] { work->scan(situation); });
    } catch (const std::system_error&) {
    }
}

void BackgroundScan::waitFor(std::chrono::milliseconds longest)
{
    const auto deadline = Clock::now() + longest;
    const QPointer<BackgroundScan> self(this);  // who hears of a result may destroy it
    while (self && worker_.joinable() && work_->waitUntil(deadline))
        collect();
}

void BackgroundScan::collect()
{
    // It may have been collected already by who waited for it.
    const std::optional<std::vector<TargetRow>> rows = work_->takeRows();
    if (!rows)
        return;
    worker_.join();
    if (auto next = std::exchange(next_, std::nullopt))
        start(std::move(*next));
    // Last, because who hears it may destroy this object.
    Q_EMIT finished(*rows);
}

}  // namespace quenchly
