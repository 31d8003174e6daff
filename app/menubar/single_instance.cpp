#include "single_instance.h"

#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QThread>

namespace quenchly {
namespace {

constexpr int answerTimeout = 2000;  // milliseconds
constexpr int retryInterval = 20;    // milliseconds
constexpr QLatin1String socketEnding(".socket");

bool fitsIntoSocketAddress(const QString& path)
{
    return QFile::encodeName(path).size() < static_cast<qsizetype>(sizeof sockaddr_un().sun_path);
}

/// The home folder's name goes in as a digest, so that it can be of any length.
QString stemFor(const QString& homeFolder)
{
    const QByteArray digest =
        QCryptographicHash::hash(QDir::cleanPath(homeFolder).toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    const QString name =
        QStringLiteral("/quenchly-menubar-%1-%2").arg(QString::number(getuid()), QString::fromLatin1(digest));
    for (const QString& folder : {qEnvironmentVariable("XDG_RUNTIME_DIR"), QDir::tempPath()})
        if (!folder.isEmpty() && QDir(folder).exists() && fitsIntoSocketAddress(folder + name + socketEnding))
            return folder + name;
    return QStringLiteral("/tmp") + name;
}

}  // namespace

SingleInstance::SingleInstance(const QString& homeFolder)
    : stem_(stemFor(homeFolder)), lock_(stem_ + QStringLiteral(".lock"))
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
        if (lock_.tryLock(0))
            return listen();
        if (lock_.error() != QLockFile::LockFailedError) {
            problem_ = QStringLiteral("cannot write %1.lock").arg(stem_);
            return Outcome::deaf;  // better two programs than none
        }
        if (handOver(activationToken))
            return Outcome::handedOver;
        QThread::msleep(retryInterval);  // the first one may hold the lock and not listen yet
    } while (waited.elapsed() < answerTimeout);
    return Outcome::unreachable;
}

SingleInstance::Outcome SingleInstance::listen()
{
    QLocalServer::removeServer(stem_ + socketEnding);
    if (server_.listen(stem_ + socketEnding))
        return Outcome::first;
    problem_ = QStringLiteral("cannot listen on %1: %2").arg(stem_ + socketEnding, server_.errorString());
    return Outcome::deaf;
}

bool SingleInstance::handOver(const QString& activationToken)
{
    QLocalSocket socket;
    socket.connectToServer(stem_ + socketEnding);
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
