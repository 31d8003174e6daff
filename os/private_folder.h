#pragma once

#include <filesystem>

namespace quenchly {

/// Whether this is a folder, and not a link to one, that belongs to this user and has the mode 0700.
bool isPrivateFolder(const std::filesystem::path& folder);

/// Makes the folder private if it is missing; its parent must be there. Whether it is private then.
bool makePrivateFolder(const std::filesystem::path& folder);

}  // namespace quenchly
