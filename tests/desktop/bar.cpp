#include "bar.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

#include "desktop.h"

namespace quenchly::testing {
namespace {

const QString barService = QStringLiteral("org.xfce.Panel");

/// The bar that took the place of the session's.
QProcess& secondBar()
{
    static QProcess bar;
    return bar;
}

}  // namespace

bool barRuns()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(barService);
}

void killBar()
{
    const uint barId = QDBusConnection::sessionBus().interface()->servicePid(barService);
    ::kill(static_cast<pid_t>(barId), SIGKILL);
    ASSERT_TRUE(waitFor([] { return !barRuns() && !trayRuns(); }));
}

void startBar()
{
    QProcess& bar = secondBar();
    bar.setStandardOutputFile(QProcess::nullDevice());
    bar.setStandardErrorFile(QProcess::nullDevice());
    // start-bar.sh says why once may not be enough.
    for (int patience = 5000; patience <= 80000; patience *= 2) {
        bar.waitForFinished();
        bar.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
        if (QTest::qWaitFor([] { return barRuns() && trayRuns(); }, patience))
            return;
        bar.kill();
    }
    FAIL() << "no bar shows";
}

void endBar()
{
    secondBar().kill();
    secondBar().waitForFinished();
}

}  // namespace quenchly::testing
