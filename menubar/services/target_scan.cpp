#include "target_scan.h"

#include <system_error>
#include <utility>

namespace quenchly {

TargetScan::TargetScan(TableFactory makeTable, QObject* parent) : QObject(parent), makeTable_(std::move(makeTable))
{
    connect(this, &TargetScan::scanned, this, &TargetScan::collect, Qt::QueuedConnection);
}

TargetScan::~TargetScan()
{
    if (worker_.joinable())
        worker_.join();
}

void TargetScan::request(TargetScanner::Situation situation)
{
    if (worker_.joinable())
        next_ = std::move(situation);
    else
        start(std::move(situation));
}

void TargetScan::start(TargetScanner::Situation situation)
{
    try {
        worker_ = std::thread([this, situation = std::move(situation)] { scan(situation); });
    } catch (const std::system_error&) {
    }
}

void TargetScan::scan(const TargetScanner::Situation& situation)
{
    if (!table_)
        table_ = makeTable_();
    rows_ = TargetScanner::rows(*table_, situation);
    Q_EMIT scanned(QPrivateSignal());
}

void TargetScan::collect()
{
    worker_.join();
    const std::vector<TargetRow> rows = std::move(rows_);
    if (auto next = std::exchange(next_, std::nullopt))
        start(std::move(*next));
    // Last, because who hears it may destroy this object.
    Q_EMIT finished(rows);
}

}  // namespace quenchly
