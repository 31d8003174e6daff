#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quenchly::demo {

struct FileWrite {
    std::filesystem::path path;
    std::string text;
};

/// What a command does to files.
struct FileChanges {
    std::vector<FileWrite> writes = {};
    std::vector<std::filesystem::path> removals = {};
};

/// Carries the changes out in order, the writes first, and stops at the first failure, which it describes in a line.
/// A reader sees the old or the new text of a file, never a part of one.
std::optional<std::string> apply(const FileChanges& changes);

}  // namespace quenchly::demo
