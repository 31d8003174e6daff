#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace quenchly::testing {

/// A TCP server on a free port of 127.0.0.1 that answers each connection, one after another, as the test says.
class ScriptedServer {
public:
    class Connection {
    public:
        explicit Connection(int socket) : socket_(socket) {}

        /// Everything up to the empty line that ends a request's headers.
        std::string request();
        /// False once the other side is gone.
        bool send(std::string_view bytes);
        /// Waits until the other side closes or the time is over.
        bool closesWithin(std::chrono::milliseconds time);

    private:
        int socket_;
    };

    explicit ScriptedServer(std::function<void(Connection&)> answer);
    /// Waits for the connection that is being answered.
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    std::uint16_t port() const noexcept { return port_; }
    int connections() const noexcept { return connections_; }

    static std::string response(std::string_view body, std::string_view status = "200 OK");

private:
    void serve();

    std::function<void(Connection&)> answer_;
    int listener_ = -1;
    int stop_[2] = {-1, -1};
    std::uint16_t port_ = 0;
    std::atomic<int> connections_ = 0;
    std::thread thread_;
};

/// A port of 127.0.0.1 where nobody listens at the moment.
std::uint16_t unusedPort();

}  // namespace quenchly::testing
