#include "session_bus.h"

#include <chrono>

namespace quenchly {
namespace {

using namespace std::chrono_literals;

/// A look at an address where nobody listens costs some ten microseconds.
constexpr auto lookInterval = 2s;

/// Several in one program, as in tests, do not share a connection.
QString nextConnectionName()
{
    static int count = 0;
    return QStringLiteral("quenchly-session-bus-%1").arg(++count);
}

}  // namespace

SessionBus::SessionBus(QObject* parent) : QObject(parent), connection_(QDBusConnection::sessionBus())
{
    connect(&look_, &QTimer::timeout, this, &SessionBus::lookForAnother);
    watchForEnd();
}

SessionBus::~SessionBus()
{
    forget();
}

/// Qt keeps a connection under its name, and what belongs to it, until it is told not to.
void SessionBus::forget() const
{
    if (connection_.name() != QDBusConnection::sessionBus().name())
        QDBusConnection::disconnectFromBus(connection_.name());
}

// The library itself sends this signal, on behalf of the bus that is no more.
void SessionBus::watchForEnd()
{
    connection_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                        SLOT(leave()));
}

void SessionBus::leave()
{
    if (look_.isActive())
        return;
    look_.start(lookInterval);
    Q_EMIT lost();
}

void SessionBus::lookForAnother()
{
    const QString name = nextConnectionName();
    QDBusConnection another = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    if (!another.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        return;
    }
    look_.stop();
    forget();
    connection_ = another;
    watchForEnd();
    Q_EMIT found();
}

}  // namespace quenchly
