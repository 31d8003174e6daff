#pragma once

#include <string>

#include "http_message.h"
#include "situation.h"
#include "state_files.h"

namespace quenchly::demo {

/// What the dashboard answers: the page at /, the files as JSON at /api/status, both to GET and HEAD, and only to who
/// asks for this machine by a name that no other site can take.
HttpResponse dashboardResponse(const HttpRequest& request, const StateFiles& files);

/// The page, which fetches itself again every two seconds. `nonce` marks its own style and script.
std::string dashboardPage(const Situation& situation, const std::string& file, const std::string& nonce);

/// The file's path and what each file holds; null for what is missing or cannot be read.
std::string statusDocument(const StateFiles& files);

}  // namespace quenchly::demo
