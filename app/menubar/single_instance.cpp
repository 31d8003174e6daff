#include "single_instance.h"

#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QThread>

#include "peer_user.h"
#include "private_folder.h"

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
QString nameFor(const QString& homeFolder)
{
    const QByteArray digest =
        QCryptographicHash::hash(QDir::cleanPath(homeFolder).toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStringLiteral("/quenchly-menubar-") + QString::fromLatin1(digest);
}

QString folderFor(const QString& name)
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && isPrivateFolder(runtime.toStdString()) &&
        fitsIntoSocketAddress(runtime + name + socketEnding))
        return runtime;
    const QString own = QStringLiteral("/quenchly-%1").arg(geteuid());
    const QString temporary = QDir::tempPath() + own;
    return fitsIntoSocketAddress(temporary + name + socketEnding) ? temporary : QStringLiteral("/tmp") + own;
}

/// Whether the other end of a connection is this user's. The folder sees to that already, but not by itself where
/// somebody can replace one of those above it.
bool isOurs(const QLocalSocket& socket)
{
    return peerUser(static_cast<int>(socket.socketDescriptor())) == geteuid();
}

}  // namespace

SingleInstance::SingleInstance(const QString& homeFolder)
    : folder_(folderFor(nameFor(homeFolder))),
      stem_(folder_ + nameFor(homeFolder)),
      lock_(stem_ + QStringLiteral(".lock"))
{
    lock_.setStaleLockTime(0);  // a program that runs for weeks still holds its lock; a dead one's is taken over anyway
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

SingleInstance::Outcome SingleInstance::claim(const QString& activationToken)
{
    if (!makePrivateFolder(folder_.toStdString())) {
        problem_ = QStringLiteral("%1 is not a folder of this user's alone").arg(folder_);
        return Outcome::deaf;  // better two programs than none
    }
    QElapsedTimer waited;
    waited.start();
    do {
        if (lock_.tryLock(0))
            return listen();
        if (lock_.error() != QLockFile::LockFailedError) {
            problem_ = QStringLiteral("cannot write %1.lock").arg(stem_);
            return Outcome::deaf;
        }
        const Answer answer = handOver(activationToken);
        if (answer == Answer::understood)
            return Outcome::handedOver;
        if (answer == Answer::anotherUsers) {
            problem_ = QStringLiteral("another user's program listens on %1").arg(stem_ + socketEnding);
            return Outcome::deaf;
        }
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

SingleInstance::Answer SingleInstance::handOver(const QString& activationToken)
{
    QLocalSocket socket;
    socket.connectToServer(stem_ + socketEnding);
    if (!socket.waitForConnected(answerTimeout))
        return Answer::none;
    if (!isOurs(socket))
        return Answer::anotherUsers;
    socket.write(activationToken.toUtf8() + '\n');
    // The answer proves that the first one lives and has understood.
    const bool answered = socket.waitForBytesWritten(answerTimeout) && socket.waitForReadyRead(answerTimeout);
    return answered ? Answer::understood : Answer::none;
}

void SingleInstance::receive()
{
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!isOurs(*socket)) {
            socket->abort();
            continue;
        }
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
