#pragma once

#include <filesystem>

namespace quenchly {

/// Whether a file is there, links followed, that this process may run.
bool isExecutableFile(const std::filesystem::path& file);

}  // namespace quenchly
