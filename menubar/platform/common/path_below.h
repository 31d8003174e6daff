#pragma once

#include <filesystem>

namespace quenchly {

/// Whether an absolute path leads below a folder. The names alone are looked at.
inline bool isBelow(const std::filesystem::path& folder, const std::filesystem::path& path)
{
    const std::filesystem::path rest = path.lexically_relative(folder);
    return !rest.empty() && *rest.begin() != ".." && *rest.begin() != ".";
}

}  // namespace quenchly
