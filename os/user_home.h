#pragma once

#include <filesystem>

namespace quenchly {

/// The home folder that the user database names for the current user, whatever HOME says; the root when it names none.
std::filesystem::path userHomeFolder();

/// What the home field of an entry of the user database stands for: one that is no absolute path stands for the root,
/// where a login begins then.
std::filesystem::path homeFolderNamed(const char* field);

}  // namespace quenchly
