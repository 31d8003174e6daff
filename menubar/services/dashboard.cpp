#include "dashboard.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <chrono>
#include <memory>

#include "checker_contract.h"
#include "text.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds silenceLimit = 1500ms;
constexpr std::chrono::milliseconds probeLimit = 2000ms;
constexpr qint64 largestAnswer = qint64{4} << 20;  // bytes

QNetworkRequest statusRequest(std::uint16_t port)
{
    QNetworkRequest request(QUrl(QString::fromStdString(dashboardAddress(port) + "/api/status")));
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
    return isValidUtf8(body) && body.find(CheckerContract::heatStateFile) != std::string::npos;
}

}  // namespace

std::string dashboardAddress(std::uint16_t port)
{
    return "http://127.0.0.1:" + std::to_string(port);
}

std::string strangersDashboard(std::uint16_t port)
{
    return "Quenchly: the dashboard is not opened, as another user's program listens on port " + std::to_string(port);
}

bool dashboardAnswers(std::uint16_t port)
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

}  // namespace quenchly
