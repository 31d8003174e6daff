#pragma once

#include <filesystem>
#include <optional>

namespace quenchly {

/// The first of a directory and its six nearest ancestors for which `accepts` holds; the root is examined when it is
/// among them. None when there is no such directory or `directory` is empty.
template <class Predicate>
std::optional<std::filesystem::path> nearestDirectory(std::filesystem::path directory, Predicate accepts)
{
    constexpr int directoriesToExamine = 7;
    for (int examined = 0; examined < directoriesToExamine && !directory.empty(); ++examined) {
        if (accepts(directory))
            return directory;
        if (directory == "/")
            return std::nullopt;
        directory = directory.parent_path();
    }
    return std::nullopt;
}

}  // namespace quenchly
