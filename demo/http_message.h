#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quenchly::demo {

/// The head of a request, as far as the dashboard needs it.
struct HttpRequest {
    std::string method;
    std::string path;  ///< without the query
    std::string host;  ///< lower case, without the port
};

struct HttpResponse {
    int status = 200;
    std::string type = "text/plain; charset=utf-8";
    std::string body = {};
    std::string headers = {};  ///< further header lines, each with its line end
};

/// Whether a request's head has arrived whole, up to its empty line.
bool isWholeHead(std::string_view received);

/// Reads a whole head; none when it is no HTTP/1 request or does not name exactly one host.
std::optional<HttpRequest> parsedRequest(std::string_view head);

/// A page that says in a line why there is none.
HttpResponse refusal(int status);

/// The response as it is sent. The connection ends with it; without its body it answers HEAD.
std::string encoded(const HttpResponse& response, bool withBody);

}  // namespace quenchly::demo
