#include "http_message.h"

#include <algorithm>
#include <cctype>

namespace quenchly::demo {
namespace {

std::string_view takeUntil(std::string_view& text, std::string_view separator)
{
    const std::size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + separator.size());
    return taken;
}

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<HttpRequest> parsedRequestLine(std::string_view line)
{
    HttpRequest request;
    request.method = takeUntil(line, " ");
    std::string_view target = takeUntil(line, " ");
    request.path = takeUntil(target, "?");
    if (request.method.empty() || !request.path.starts_with('/') || (line != "HTTP/1.1" && line != "HTTP/1.0"))
        return std::nullopt;
    return request;
}

std::string_view reason(int status)
{
    switch (status) {
        case 200:
            return "OK";
        case 400:
            return "Bad Request";
        case 404:
            return "Not Found";
        case 405:
            return "Method Not Allowed";
        case 421:
            return "Misdirected Request";
        case 431:
            return "Request Header Fields Too Large";
        default:
            return "Internal Server Error";
    }
}

}  // namespace

bool isWholeHead(std::string_view received)
{
    return received.find("\r\n\r\n") != std::string_view::npos;
}

std::optional<HttpRequest> parsedRequest(std::string_view head)
{
    head = head.substr(0, head.find("\r\n\r\n"));
    std::optional<HttpRequest> request = parsedRequestLine(takeUntil(head, "\r\n"));
    int hosts = 0;
    while (request && !head.empty()) {
        std::string_view value = takeUntil(head, "\r\n");
        if (lowerCase(takeUntil(value, ":")) != "host")
            continue;
        value = trimmed(value);
        request->host = lowerCase(takeUntil(value, ":"));
        ++hosts;
    }
    return hosts == 1 ? request : std::nullopt;
}

HttpResponse refusal(int status)
{
    return {.status = status, .body = std::string(reason(status)) + "\n"};
}

std::string encoded(const HttpResponse& response, bool withBody)
{
    std::string text = "HTTP/1.1 " + std::to_string(response.status) + " ";
    text.append(reason(response.status)).append("\r\nContent-Type: ").append(response.type);
    text.append("\r\nContent-Length: ").append(std::to_string(response.body.size()));
    text.append("\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\nConnection: close\r\n");
    text.append(response.headers).append("\r\n");
    if (withBody)
        text.append(response.body);
    return text;
}

}  // namespace quenchly::demo
