#pragma once

#include "system.h"

namespace quenchly {

/// Takes from a system whose home folder is not the user's what would change things outside of that folder.
void confineToHomeFolder(System& system);

/// Whether an absolute path leads out of the home folder, symbolic links considered, although that is to hold
/// everything.
bool leadsOutOfHome(const System& system, const std::filesystem::path& path);

}  // namespace quenchly
