#include "http_connection.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace quenchly::demo {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 5s;
constexpr std::size_t longestHead = 8192;        // bytes
constexpr std::size_t mostReadPast = 1U << 20U;  // bytes

bool mustWait()
{
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

}  // namespace

HttpConnection::HttpConnection(Descriptor socket, Clock::time_point now)
    : socket_(std::move(socket)), deadline_(now + patience)
{
}

short HttpConnection::events() const
{
    return phase_ == Phase::sending ? POLLOUT : POLLIN;
}

void HttpConnection::proceed(const std::function<HttpResponse(const HttpRequest&)>& handler)
{
    if (phase_ == Phase::receiving)
        receive(handler);
    if (phase_ == Phase::sending)
        send();
    if (phase_ == Phase::finishing)
        readPast();
}

void HttpConnection::expire(Clock::time_point now)
{
    if (now >= deadline_)
        phase_ = Phase::over;
}

void HttpConnection::receive(const std::function<HttpResponse(const HttpRequest&)>& handler)
{
    std::array<char, 4096> buffer;
    while (phase_ == Phase::receiving) {
        const ::ssize_t count = ::recv(descriptor(), buffer.data(), buffer.size(), 0);
        if (count < 0 && mustWait())
            return;
        if (count <= 0) {
            phase_ = Phase::over;
            return;
        }
        received_.append(buffer.data(), static_cast<std::size_t>(count));
        if (isWholeHead(received_) || received_.size() > longestHead)
            answer(handler);
    }
}

void HttpConnection::answer(const std::function<HttpResponse(const HttpRequest&)>& handler)
{
    const bool tooLong = received_.find("\r\n\r\n") > longestHead;
    const auto request = tooLong ? std::nullopt : parsedRequest(received_);
    const HttpResponse response = request ? handler(*request) : refusal(tooLong ? 431 : 400);
    toSend_ = encoded(response, !request || request->method != "HEAD");
    received_ = {};
    phase_ = Phase::sending;
}

void HttpConnection::send()
{
    while (sent_ < toSend_.size()) {
        const ::ssize_t count = ::send(descriptor(), toSend_.data() + sent_, toSend_.size() - sent_, 0);
        if (count < 0 && mustWait())
            return;
        if (count < 0) {
            phase_ = Phase::over;
            return;
        }
        sent_ += static_cast<std::size_t>(count);
    }
    ::shutdown(descriptor(), SHUT_WR);
    phase_ = Phase::finishing;
}

void HttpConnection::readPast()
{
    std::array<char, 4096> buffer;
    while (readPast_ < mostReadPast) {
        const ::ssize_t count = ::recv(descriptor(), buffer.data(), buffer.size(), 0);
        if (count < 0 && mustWait())
            return;
        if (count <= 0)
            break;
        readPast_ += static_cast<std::size_t>(count);
    }
    phase_ = Phase::over;
}

}  // namespace quenchly::demo
