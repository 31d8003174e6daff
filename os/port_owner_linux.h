#pragma once

#include <filesystem>

#include "port_owner.h"

namespace quenchly {

/// From a folder laid out as /proc; nobody where it cannot be read.
PortOwner portOwner(std::uint16_t port, const std::filesystem::path& procfs);

}  // namespace quenchly
