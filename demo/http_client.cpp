#include "http_client.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <chrono>

#include "descriptor.h"
#include "loopback.h"

namespace quenchly::demo {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds patience{2000};
constexpr std::size_t longestAnswer = 8U << 20U;  // bytes

bool isReady(int descriptor, short event, Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting{.fd = descriptor, .events = event, .revents = 0};
    return left > 0 && ::poll(&waiting, 1, static_cast<int>(left)) == 1;
}

bool connectToThisMachine(int descriptor, std::uint16_t port, Clock::time_point deadline)
{
    const sockaddr_in address = loopbackAddress(port);
    return neverBlock(descriptor) &&
           (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ||
            (errno == EINPROGRESS && isReady(descriptor, POLLOUT, deadline)));
}

std::string everythingFrom(int descriptor, Clock::time_point deadline)
{
    std::string received;
    std::array<char, 4096> buffer;
    while (received.size() < longestAnswer && isReady(descriptor, POLLIN, deadline)) {
        const ::ssize_t count = ::recv(descriptor, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            break;
        received.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return received;
}

}  // namespace

std::optional<std::string> fetchFromThisMachine(std::uint16_t port, const std::string& path)
{
    const Descriptor socket(::socket(AF_INET, SOCK_STREAM, 0));
    const Clock::time_point deadline = Clock::now() + patience;
    if (!connectToThisMachine(socket.number(), port, deadline))
        return std::nullopt;
    const std::string request = "GET " + path + " HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n";
    if (::send(socket.number(), request.data(), request.size(), 0) != static_cast<::ssize_t>(request.size()))
        return std::nullopt;
    const std::string answer = everythingFrom(socket.number(), deadline);
    const std::size_t head = answer.find("\r\n\r\n");
    if (!answer.starts_with("HTTP/1.") || answer.substr(8, 5) != " 200 " || head == std::string::npos)
        return std::nullopt;
    return answer.substr(head + 4);
}

}  // namespace quenchly::demo
