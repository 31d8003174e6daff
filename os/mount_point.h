#pragma once

#include <filesystem>

namespace quenchly {

/// Whether something is mounted at a folder. False where that cannot be told.
bool isMountPoint(const std::filesystem::path& folder);

}  // namespace quenchly
