#include "single_instance.h"

#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QThread>

namespace quenchly {
namespace {

constexpr int answerTimeout = 2000;  // milliseconds
constexpr int retryInterval = 20;    // milliseconds

QString runtimeFolder()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QDir(folder).exists() && !folder.isEmpty() ? folder : QDir::tempPath();
}

/// The path of a local socket may have some 100 bytes, so the home folder's name goes in as a digest.
QString pathFor(const QString& homeFolder, const QString& ending)
{
    const QByteArray digest =
        QCryptographicHash::hash(QDir::cleanPath(homeFolder).toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStringLiteral("%1/quenchly-menubar-%2-%3.%4")
        .arg(runtimeFolder(), QString::number(getuid()), QString::fromLatin1(digest), ending);
}

}  // namespace

SingleInstance::SingleInstance(const QString& homeFolder)
    : socketPath_(pathFor(homeFolder, QStringLiteral("socket"))), lock_(pathFor(homeFolder, QStringLiteral("lock")))
{
    lock_.setStaleLockTime(0);  // a program that runs for weeks still holds its lock; a dead one's is taken over anyway
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

SingleInstance::Outcome SingleInstance::claim(const QString& activationToken)
{
    QElapsedTimer waited;
    waited.start();
    do {
        if (lock_.tryLock(0)) {
            QLocalServer::removeServer(socketPath_);
            server_.listen(socketPath_);
            return Outcome::first;
        }
        if (lock_.error() != QLockFile::LockFailedError)
            return Outcome::first;  // nothing can be written there: better two programs than none
        if (handOver(activationToken))
            return Outcome::handedOver;
        QThread::msleep(retryInterval);  // the first one may hold the lock and not listen yet
    } while (waited.elapsed() < answerTimeout);
    return Outcome::unreachable;
}

bool SingleInstance::handOver(const QString& activationToken)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(answerTimeout))
        return false;
    socket.write(activationToken.toUtf8() + '\n');
    // The answer proves that the first one lives and has understood.
    return socket.waitForBytesWritten(answerTimeout) && socket.waitForReadyRead(answerTimeout);
}

void SingleInstance::receive()
{
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine())
                return;
            const QString token = QString::fromUtf8(socket->readLine(4096)).trimmed();
            socket->write("ok\n");
            socket->flush();
            socket->disconnectFromServer();
            Q_EMIT openRequested(token);
        });
    }
}

}  // namespace quenchly
