#pragma once

#include "child_process.h"

namespace quenchly {

/// Starts the child and lets it run; it never becomes a zombie. False when it could not be started. Any thread.
bool startDetached(const ChildProcess& child);

}  // namespace quenchly
