#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <memory>

#include "command_runner.h"
#include "text.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds silenceLimit = 1500ms;
constexpr std::chrono::milliseconds probeLimit = 2000ms;
constexpr std::chrono::milliseconds startLimit = 8000ms;
constexpr std::chrono::milliseconds pauseBetweenProbes = 250ms;
constexpr qint64 largestAnswer = qint64{4} << 20;  // bytes

QNetworkRequest statusRequest(std::uint16_t port)
{
    QNetworkRequest request(QUrl(QString::fromStdString(CLIRunner::dashboardAddress(port) + "/api/status")));
    request.setTransferTimeout(static_cast<int>(silenceLimit.count()));
    // A redirection must not lead the probe away from this machine's dashboard.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    // A packed answer could unpack beyond the limit on its size.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

bool isHealthy(QNetworkReply& reply)
{
    if (!reply.isFinished() || reply.error() != QNetworkReply::NoError || reply.bytesAvailable() > largestAnswer ||
        reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 200)
        return false;
    const std::string body = reply.readAll().toStdString();
    return isValidUtf8(body) && body.find("heat-state.json") != std::string::npos;
}

void pauseThread()
{
    QEventLoop loop;
    QTimer::singleShot(pauseBetweenProbes, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

std::string CLIRunner::dashboardAddress(std::uint16_t port)
{
    return "http://127.0.0.1:" + std::to_string(port);
}

bool CLIRunner::dashboardLooksHealthy(std::uint16_t port)
{
    QNetworkAccessManager network;
    QEventLoop loop;
    const std::unique_ptr<QNetworkReply> reply(network.get(statusRequest(port)));
    // Qt stops reading a little before its buffer is full, which must not hide that the answer is too large.
    reply->setReadBufferSize(2 * largestAnswer);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, [&] {
        if (reply->bytesAvailable() > largestAnswer)
            loop.quit();
    });
    QTimer::singleShot(probeLimit, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    return isHealthy(*reply);
}

bool CLIRunner::openDashboard() const
{
    const auto stopped = [] { return QThread::currentThread()->isInterruptionRequested(); };
    const auto show = [this] { return openAddress(dashboardAddress(dashboardPort)), true; };
    if (dashboardLooksHealthy(dashboardPort))
        return show();
    if (stopped() || !run({"serve"}))
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
