#pragma once

#include <filesystem>

namespace quenchly {

/// Whether something is mounted at a folder. False where that cannot be told.
bool isMountPoint(const std::filesystem::path& folder);

/// What devices tell of that: nothing of a part of a disk that is mounted within the same disk. True for the root.
bool isOnOtherDeviceThanItsParent(const std::filesystem::path& folder);

}  // namespace quenchly
