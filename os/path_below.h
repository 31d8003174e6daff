#pragma once

#include <filesystem>

namespace quenchly {

/// Whether an absolute path leads below a folder. The names alone are looked at.
inline bool isBelow(const std::filesystem::path& folder, const std::filesystem::path& path)
{
    const std::filesystem::path rest = path.lexically_relative(folder);
    return !rest.empty() && *rest.begin() != ".." && *rest.begin() != ".";
}

/// Where an absolute path leads: symbolic links are followed, also those that lead to nothing yet.
std::filesystem::path withoutLinks(const std::filesystem::path& path);

/// The same for the thing itself that has this path, should it be a link.
std::filesystem::path placeOf(const std::filesystem::path& path);

/// Whether an absolute path leads below a folder, symbolic links considered.
bool leadsBelow(const std::filesystem::path& folder, const std::filesystem::path& path);

}  // namespace quenchly
