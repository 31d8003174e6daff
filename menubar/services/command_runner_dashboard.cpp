#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <optional>

#include "command_runner.h"
#include "dashboard.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds startLimit = 8000ms;
constexpr std::chrono::milliseconds pauseBetweenProbes = 250ms;

/// What `openDashboard` returns; none as long as nobody who could be opened answers.
std::optional<bool> openIfItAnswers(const CLIRunner& runner)
{
    if (!CLIRunner::dashboardLooksHealthy(runner.dashboardPort))
        return std::nullopt;
    switch (runner.portOwner(runner.dashboardPort)) {
        case PortOwner::nobody:
            return std::nullopt;  // whoever answered is gone, and anybody may come next
        case PortOwner::anotherUser:
            runner.log(strangersDashboard(runner.dashboardPort));
            return false;
        case PortOwner::thisUser:
        case PortOwner::unknown:
            break;
    }
    runner.openAddress(dashboardAddress(runner.dashboardPort));
    return true;
}

void pauseThread()
{
    QEventLoop loop;
    QTimer::singleShot(pauseBetweenProbes, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

bool CLIRunner::dashboardLooksHealthy(std::uint16_t port)
{
    return dashboardAnswers(port);
}

bool CLIRunner::openDashboard() const
{
    const auto stopped = [] { return QThread::currentThread()->isInterruptionRequested(); };
    if (const auto opened = openIfItAnswers(*this))
        return *opened;
    if (stopped() || !run(ToolCommand::serve))
        return false;
    const QDeadlineTimer deadline(startLimit);
    while (!deadline.hasExpired() && !stopped()) {
        if (const auto opened = openIfItAnswers(*this))
            return *opened;
        pauseThread();
    }
    return false;
}

}  // namespace quenchly
