#include <QFutureWatcher>
#include <QPointer>
#include <QPromise>
#include <ranges>
#include <system_error>
#include <thread>
#include <utility>

#include "child_process.h"
#include "command_runner.h"
#include "dashboard.h"
#include "state_watcher.h"

namespace quenchly {

void StateWatcher::setProtect(bool on)
{
    startTool(&StateWatcher::protectBusy_, {on ? ToolCommand::enable : ToolCommand::disable});
}

void StateWatcher::installAgent()
{
    startTool(&StateWatcher::protectBusy_, {ToolCommand::installAgent});
}

void StateWatcher::unloadListed()
{
    startTool(&StateWatcher::protectBusy_, {ToolCommand::unloadListed});
}

void StateWatcher::acknowledgeQuarantine(const Text& id)
{
    startTool(&StateWatcher::ackBusy_, {{ToolCommand::acknowledge, id.utf8()}});
}

void StateWatcher::acknowledgeAllVisibleQuarantine()
{
    std::vector<ToolRun> runs;
    for (const QuarantinedEntry& entry : status_.quarantine)
        if (!entry.acknowledged)
            runs.emplace_back(ToolCommand::acknowledge, entry.id.utf8());
    if (!runs.empty())
        startTool(&StateWatcher::ackBusy_, std::move(runs));
}

// The first run has begun when this returns, so that quitting at once does not lose it. The thread that waits for its
// end is neither owned nor waited for, so that quitting never waits for a tool, and works on copies alone: the watcher
// may be gone when the tool ends. A promise whose thread cannot be started counts as ended.
void StateWatcher::startTool(bool StateWatcher::*busy, std::vector<ToolRun> runs)
{
    auto runner = this->*busy ? std::nullopt : CLIRunner::find(dataHome_, system_);
    if (!runner)
        return;
    this->*busy = true;
    const std::optional<pid_t> first = runner->start(runs.front());
    QPromise<void> tool;
    tool.start();
    auto* ended = new QFutureWatcher<void>(this);
    connect(ended, &QFutureWatcher<void>::finished, this, [this, ended, busy] { finishTool(ended, busy); });
    ended->setFuture(tool.future());
    try {
        std::thread([first, runner = std::move(*runner), runs = std::move(runs), tool = std::move(tool)]() mutable {
            if (first)
                exitStatusOf(*first);
            for (const ToolRun& run : runs | std::views::drop(1))
                runner.runWaiting(run);
            tool.finish();
        }).detach();
    } catch (const std::system_error&) {
    }
    Q_EMIT published();
}

void StateWatcher::finishTool(QObject* ended, bool StateWatcher::*busy)
{
    ended->deleteLater();
    const QPointer<StateWatcher> self(this);
    reload();
    if (!self)
        return;
    this->*busy = false;
    Q_EMIT published();
}

bool StateWatcher::runLiveData() const
{
    return liveDataTask()();
}

void StateWatcher::startLiveData()
{
    if (liveData_ && !liveData_->isFinished())
        return;
    liveData_.reset(QThread::create(liveDataTask()));
    liveData_->start();
}

std::function<bool()> StateWatcher::liveDataTask() const
{
    if (auto runner = CLIRunner::find(dataHome_, system_))
        return [runner = std::move(*runner)] { return runner.openDashboard(); };
    return [open = system_.openAddress, owner = system_.portOwner, log = system_.log, port = system_.dashboardPort] {
        if (owner(port) == PortOwner::anotherUser)
            log(strangersDashboard(port));
        else
            open(dashboardAddress(port));
        return false;
    };
}

}  // namespace quenchly
