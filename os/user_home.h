#pragma once

#include <filesystem>

namespace quenchly {

/// The home folder that the user database names for the current user, whatever HOME says; the root when it names none.
std::filesystem::path userHomeFolder();

}  // namespace quenchly
