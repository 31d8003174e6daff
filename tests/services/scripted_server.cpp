#include "scripted_server.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace quenchly::testing {
namespace {

void require(bool succeeded, const char* what)
{
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), what);
}

/// A listening socket on a free port, which is stored in `port`.
int listenOnLoopback(std::uint16_t& port)
{
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    require(bind(listener, generic, size) == 0 && listen(listener, 16) == 0, "listen");
    require(getsockname(listener, generic, &size) == 0, "getsockname");
    port = ntohs(address.sin_port);
    return listener;
}

}  // namespace

std::string ScriptedServer::Connection::request()
{
    std::string text;
    char byte = 0;
    while (!text.ends_with("\r\n\r\n") && recv(socket_, &byte, 1, 0) == 1)
        text += byte;
    return text;
}

bool ScriptedServer::Connection::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), 0);
        if (sent < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool ScriptedServer::Connection::closesWithin(std::chrono::milliseconds time)
{
    pollfd events{.fd = socket_, .events = POLLIN, .revents = 0};
    std::array<char, 4096> ignored;
    while (poll(&events, 1, static_cast<int>(time.count())) > 0)
        if (recv(socket_, ignored.data(), ignored.size(), 0) <= 0)
            return true;
    return false;
}

ScriptedServer::ScriptedServer(std::function<void(Connection&)> answer) : answer_(std::move(answer))
{
    std::signal(SIGPIPE, SIG_IGN);
    require(pipe(stop_) == 0, "pipe");
    listener_ = listenOnLoopback(port_);
    thread_ = std::thread([this] { serve(); });
}

ScriptedServer::~ScriptedServer()
{
    close(stop_[1]);
    thread_.join();
    close(stop_[0]);
    close(listener_);
}

std::string ScriptedServer::response(std::string_view body, std::string_view status)
{
    return "HTTP/1.1 " + std::string(status) + "\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + std::string(body);
}

void ScriptedServer::serve()
{
    while (true) {
        pollfd events[] = {{.fd = listener_, .events = POLLIN, .revents = 0},
                           {.fd = stop_[0], .events = POLLIN, .revents = 0}};
        poll(events, 2, -1);
        if (events[1].revents != 0)
            return;
        const int socket = accept(listener_, nullptr, nullptr);
        ++connections_;
        Connection connection(socket);
        answer_(connection);
        close(socket);
    }
}

std::uint16_t unusedPort()
{
    std::uint16_t port = 0;
    close(listenOnLoopback(port));
    return port;
}

}  // namespace quenchly::testing
