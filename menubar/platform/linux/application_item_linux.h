#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace quenchly {

/// The AppImage that `executable` runs from, else `executable` itself.
std::filesystem::path applicationItem(const std::filesystem::path& executable,
                                      const std::map<std::string, std::string>& environment);

}  // namespace quenchly
