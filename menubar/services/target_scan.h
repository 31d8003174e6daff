#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "target_scanner.h"

namespace quenchly {

/// Runs target scans off the thread that it lives on, one at a time. There is a worker thread only while a scan runs.
/// Destroying it waits for a running scan and delivers nothing.
class TargetScan : public QObject {
    Q_OBJECT

public:
    using TableFactory = std::function<std::unique_ptr<ProcessTable>()>;

    /// The table is made by the first scan, on its thread, and serves the scans alone.
    explicit TargetScan(TableFactory makeTable, QObject* parent = nullptr);
    ~TargetScan() override;

    /// Asks for a scan. While one runs only the newest situation is kept for the next. A scan that the system has no
    /// thread for is left out.
    void request(TargetScanner::Situation situation);

Q_SIGNALS:
    /// On the thread that this object lives on.
    void finished(const std::vector<TargetRow>& rows);

    /// From the worker thread; for this class alone.
    void scanned(QPrivateSignal);

private:
    void start(TargetScanner::Situation situation);
    void scan(const TargetScanner::Situation& situation);
    void collect();

    TableFactory makeTable_;
    std::optional<TargetScanner::Situation> next_;
    std::thread worker_;

    // The worker's own while it runs; joining it hands them over.
    std::unique_ptr<ProcessTable> table_;
    std::vector<TargetRow> rows_;
};

}  // namespace quenchly
