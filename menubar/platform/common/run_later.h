#pragma once

#include <chrono>
#include <functional>

namespace quenchly {

/// Calls `task` once on the interface thread after `delay`, unless the program ends first. Needs a QCoreApplication.
void runLater(std::chrono::milliseconds delay, const std::function<void()>& task);

}  // namespace quenchly
