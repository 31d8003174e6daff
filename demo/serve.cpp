#include "serve.h"

#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <system_error>

#include "dashboard.h"
#include "file_reading.h"
#include "http_client.h"
#include "http_server.h"

namespace quenchly::demo {
namespace {

std::optional<std::uint16_t> chosenPort()
{
    const char* variable = std::getenv("QUENCHLY_DASHBOARD_PORT");
    const std::string_view text = variable == nullptr ? "" : variable;
    if (text.empty())
        return CheckerContract::dashboardPort;
    std::uint16_t port = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return port;
}

/// The state file of the dashboard that answers at a port; none when something else has it.
std::optional<std::string> fileShownAt(std::uint16_t port)
{
    const auto body = fetchFromThisMachine(port, "/api/status");
    const Json document = Json::parse(body.value_or(""), nullptr, false);
    if (!document.is_object() || !document.contains("file") || !document["file"].is_string())
        return std::nullopt;
    return document["file"].get<std::string>();
}

Outcome portTaken(std::uint16_t port, const StateFiles& files)
{
    const std::optional<std::string> shown = fileShownAt(port);
    if (shown == files.heatState().string())
        return {.text = "the dashboard answers already at " + dashboardAddress(port) + "\n"};
    const std::string holder = shown ? "a dashboard of " + *shown : "another program";
    return {.status = 1, .text = "port " + std::to_string(port) + " is taken by " + holder};
}

}  // namespace

std::string dashboardAddress(std::uint16_t port)
{
    return "http://127.0.0.1:" + std::to_string(port);
}

Outcome serve(const StateFiles& files)
{
    const std::optional<std::uint16_t> port = chosenPort();
    if (!port)
        return {.status = 2, .text = "QUENCHLY_DASHBOARD_PORT is not a port"};
    std::signal(SIGPIPE, SIG_IGN);
    HttpServer server;
    if (const std::error_code failure = server.listen(*port)) {
        if (failure == std::errc::address_in_use)
            return portTaken(*port, files);
        return {.status = 1, .text = "cannot listen on port " + std::to_string(*port) + ": " + failure.message()};
    }
    std::cout << "the dashboard is at " << dashboardAddress(server.port()) << std::endl;
    // A trial's folder goes away with it, and nobody else would end this program.
    bool seen = false;
    const auto folderIsLeft = [&] {
        const bool left = fileExists(files.folder().parent_path());
        seen = seen || left;
        return left || !seen;
    };
    server.run([&](const HttpRequest& request) { return dashboardResponse(request, files); }, folderIsLeft);
    return {};
}

}  // namespace quenchly::demo
