#pragma once

#include <filesystem>

namespace quenchly {

/// Whether nobody but this user and root can change what an absolute path leads to: it, every link on the way and every
/// folder above belong to one of them, and nobody else may write there. Only folders above it may be open to others
/// where these cannot replace what is not theirs, as in /tmp. False for what is not there.
bool onlyUserCanChange(const std::filesystem::path& path);

/// The same for a folder, a file in it that is named by a relative path, and every folder between the two.
bool onlyUserCanChange(const std::filesystem::path& folder, const std::filesystem::path& fileBelow);

}  // namespace quenchly
