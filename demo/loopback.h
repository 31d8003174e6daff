#pragma once

#include <netinet/in.h>

#include <cstdint>

namespace quenchly::demo {

/// A port of 127.0.0.1.
sockaddr_in loopbackAddress(std::uint16_t port);

}  // namespace quenchly::demo
