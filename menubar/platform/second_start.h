#pragma once

#include <functional>

namespace quenchly {

/// Calls `task` on the interface thread whenever somebody starts the program again and the system, instead of starting
/// it, tells the one that runs. Where the system starts another one, SingleInstance hears of it. Needs a
/// QCoreApplication; call it once.
void whenStartedAgain(const std::function<void()>& task);

}  // namespace quenchly
