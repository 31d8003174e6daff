#include "dashboard.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <random>

#include "current_instant.h"

namespace quenchly::demo {
namespace {

Json valueOf(const std::filesystem::path& path)
{
    const std::optional<Json> object = readObject(path);
    return object ? *object : Json(nullptr);
}

std::string freshNonce()
{
    std::random_device random;
    std::array<char, 33> text{};
    std::snprintf(text.data(), text.size(), "%08x%08x%08x%08x", random(), random(), random(), random());
    return text.data();
}

HttpResponse page(const StateFiles& files)
{
    const std::string nonce = freshNonce();
    return {.type = "text/html; charset=utf-8",
            .body = dashboardPage(readSituation(files, currentInstant()), files.heatState().string(), nonce),
            .headers = "Content-Security-Policy: default-src 'none'; style-src 'nonce-" + nonce +
                       "'; script-src 'nonce-" + nonce +
                       "'; connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n"};
}

bool isThisMachine(const std::string& host)
{
    return host == "127.0.0.1" || host == "localhost";
}

}  // namespace

HttpResponse dashboardResponse(const HttpRequest& request, const StateFiles& files)
{
    if (!isThisMachine(request.host))
        return refusal(421);
    const bool isPage = request.path == "/";
    if (!isPage && request.path != "/api/status")
        return refusal(404);
    if (request.method != "GET" && request.method != "HEAD") {
        HttpResponse response = refusal(405);
        response.headers = "Allow: GET, HEAD\r\n";
        return response;
    }
    if (isPage)
        return page(files);
    return {.type = "application/json", .body = statusDocument(files)};
}

std::string statusDocument(const StateFiles& files)
{
    const Json document{{"file", files.heatState().string()},
                        {"state", valueOf(files.heatState())},
                        {"managed", valueOf(files.managed())},
                        {"protectMode", valueOf(files.protectMode())},
                        {"throttle", valueOf(files.throttle())}};
    // A folder's name need not be UTF-8.
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quenchly::demo
