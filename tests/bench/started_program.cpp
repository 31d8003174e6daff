#include "started_program.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QTimer>
#include <chrono>
#include <cstdlib>

namespace quenchly::bench {
namespace {

using namespace std::chrono_literals;

constexpr auto deadline = 10s;

}  // namespace

StartedProgram::StartedProgram(char** arguments)
{
    if (::posix_spawn(&id_, arguments[0], nullptr, nullptr, arguments, environ) != 0)
        std::exit(1);
}

StartedProgram::~StartedProgram()
{
    ::kill(id_, SIGTERM);
    ::waitpid(id_, nullptr, 0);
}

Tray::Tray()
{
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusConnection::sessionBus().connect(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                          QStringLiteral("StatusNotifierItemRegistered"), this,
                                          SLOT(registered(QString)));
}

bool Tray::waitForItem()
{
    came_ = false;
    QTimer limit;
    QObject::connect(&limit, &QTimer::timeout, &loop_, &QEventLoop::quit);
    limit.start(deadline);
    loop_.exec();
    return came_;
}

void Tray::registered(const QString&)
{
    came_ = true;
    loop_.quit();
}

}  // namespace quenchly::bench
