#pragma once

#include <cstdint>
#include <string>

namespace quenchly {

/// The page of a dashboard that is served on a port of this machine.
std::string dashboardAddress(std::uint16_t port);

/// What the log says when another user listens there.
std::string strangersDashboard(std::uint16_t port);

/// Whether a dashboard of ours answers on this machine; blocks for at most two seconds. Needs an application object.
/// False at once in a QThread that is told to quit.
bool dashboardAnswers(std::uint16_t port);

}  // namespace quenchly
