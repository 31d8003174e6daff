#pragma once

#include <filesystem>
#include <memory>

#include "process_table.h"

namespace quenchly {

/// The AI servers that run in the stand-in's story: those that its state holds, eases or has set aside. A demo shows
/// them instead of the machine's.
std::unique_ptr<ProcessTable> makeDemoProcesses(const std::filesystem::path& dataHome);

}  // namespace quenchly
