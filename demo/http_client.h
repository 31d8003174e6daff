#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quenchly::demo {

/// The body that 127.0.0.1 answers with status 200; none on any other outcome. Takes two seconds at most. The program
/// has to ignore SIGPIPE.
std::optional<std::string> fetchFromThisMachine(std::uint16_t port, const std::string& path);

}  // namespace quenchly::demo
