#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quenchly {

/// Why a folder is not to be removed with all that is in it, however it came to be named.
enum class RemovalRefusal { root, homeFolder, notAFolder, mountPoint, otherOwner };

/// What a symbolic link leads to counts. A home folder is `homeFolder`, the user database's one for this user, and
/// every folder that holds one of them. None where nothing speaks against it, or nothing is there.
std::optional<RemovalRefusal> refusalToRemove(const std::filesystem::path& folder,
                                              const std::filesystem::path& homeFolder);

/// The end of a sentence on the folder: "it is a home folder or holds one".
std::string_view reason(RemovalRefusal refusal);

}  // namespace quenchly
