#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <system_error>

#include "http_connection.h"

namespace quenchly::demo {

/// Answers HTTP requests on 127.0.0.1, in one thread. The program has to ignore SIGPIPE. A client that is slow, silent
/// or endless costs the others nothing: it is let go after some seconds, and sooner when there are too many.
class HttpServer {
public:
    using Handler = std::function<HttpResponse(const HttpRequest&)>;

    static constexpr std::size_t mostConnections = 64;

    /// Takes the port; 0 takes any free one.
    std::error_code listen(std::uint16_t port);

    /// The port that was taken.
    std::uint16_t port() const;

    /// Answers for as long as `goOn`, asked about once a second, says so.
    void run(const Handler& handler, const std::function<bool()>& goOn);

private:
    void acceptSome();
    void waitForEvents();

    Descriptor listener_;
    std::list<HttpConnection> connections_;  // the oldest first
};

}  // namespace quenchly::demo
