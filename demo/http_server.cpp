#include "http_server.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>
#include <vector>

#include "loopback.h"

namespace quenchly::demo {
namespace {

constexpr int pollInterval = 1000;  // milliseconds
constexpr int mostAcceptedAtOnce = 16;

}  // namespace

std::error_code HttpServer::listen(std::uint16_t port)
{
    Descriptor socket(::socket(AF_INET, SOCK_STREAM, 0));
    // Without it the port stays taken for a minute after a server has ended.
    const int reuse = 1;
    ::setsockopt(socket.number(), SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
    const sockaddr_in address = loopbackAddress(port);
    const auto* general = reinterpret_cast<const sockaddr*>(&address);
    if (!neverBlock(socket.number()) || ::bind(socket.number(), general, sizeof address) != 0 ||
        ::listen(socket.number(), SOMAXCONN) != 0)
        return {errno, std::generic_category()};
    listener_ = std::move(socket);
    return {};
}

std::uint16_t HttpServer::port() const
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener_.number(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void HttpServer::run(const Handler& handler, const std::function<bool()>& goOn)
{
    while (goOn()) {
        waitForEvents();
        acceptSome();
        for (HttpConnection& connection : connections_) {
            connection.proceed(handler);
            connection.expire(HttpConnection::Clock::now());
        }
        connections_.remove_if([](const HttpConnection& connection) { return connection.isOver(); });
    }
}

void HttpServer::waitForEvents()
{
    std::vector<pollfd> waiting{{.fd = listener_.number(), .events = POLLIN, .revents = 0}};
    for (const HttpConnection& connection : connections_)
        waiting.push_back({.fd = connection.descriptor(), .events = connection.events(), .revents = 0});
    ::poll(waiting.data(), static_cast<nfds_t>(waiting.size()), pollInterval);
}

void HttpServer::acceptSome()
{
    // A few at a time, so that each has been heard before it can be the oldest.
    for (int accepted = 0; accepted < mostAcceptedAtOnce; ++accepted) {
        Descriptor socket(::accept(listener_.number(), nullptr, nullptr));
        if (socket.number() < 0)
            return;
        if (!neverBlock(socket.number()))
            continue;
        if (connections_.size() == mostConnections)
            connections_.pop_front();
        connections_.emplace_back(std::move(socket), HttpConnection::Clock::now());
    }
}

}  // namespace quenchly::demo
