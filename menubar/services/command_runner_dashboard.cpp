#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <chrono>

#include "command_runner.h"
#include "dashboard.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds startLimit = 8000ms;
constexpr std::chrono::milliseconds pauseBetweenProbes = 250ms;

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
    const auto show = [this] { return openAddress(dashboardAddress(dashboardPort)), true; };
    if (dashboardLooksHealthy(dashboardPort))
        return show();
    if (stopped() || !run(ToolCommand::serve))
        return false;
    const QDeadlineTimer deadline(startLimit);
    while (!deadline.hasExpired() && !stopped()) {
        if (dashboardLooksHealthy(dashboardPort))
            return show();
        pauseThread();
    }
    return false;
}

}  // namespace quenchly
