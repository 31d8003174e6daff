#pragma once

#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "target_scanner.h"

namespace quenchly {

/// Runs target scans off the thread that it lives on, one at a time. There is a worker thread only while a scan runs.
/// Destroying it waits for a running scan, but no longer than half a second, and delivers nothing. A scan that takes
/// longer is left behind: it keeps its table until it ends or the process does, and reaches nothing else.
class BackgroundScan : public QObject {
    Q_OBJECT

public:
    using TableFactory = std::function<std::unique_ptr<ProcessTable>()>;

    /// The table is made by the first scan, on its thread, and serves the scans alone. It must not need anything that
    /// may be gone before it.
    explicit BackgroundScan(TableFactory makeTable, QObject* parent = nullptr);
    ~BackgroundScan() override;

    /// Asks for a scan. While one runs only the newest situation is kept for the next. A scan that the system has no
    /// thread for is left out.
    void request(TargetScanner::Situation situation);

    /// Blocks until everything asked for is finished and delivered, or for as long as `longest`; what ends later is
    /// delivered as ever.
    void waitFor(std::chrono::milliseconds longest);

Q_SIGNALS:
    /// On the thread that this object lives on.
    void finished(const std::vector<TargetRow>& rows);

private:
    class Work;

    void start(TargetScanner::Situation situation);
    /// Nothing happens unless a scan has ended.
    void collect();

    std::shared_ptr<Work> work_;
    std::optional<TargetScanner::Situation> next_;
    std::thread worker_;
};

}  // namespace quenchly
