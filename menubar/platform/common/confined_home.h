#pragma once

#include "system.h"

namespace quenchly {

/// Takes from a system whose home folder is not the user's what would change things outside of that folder.
void confineToHomeFolder(System& system);

}  // namespace quenchly
