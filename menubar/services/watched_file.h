#pragma once

#include <filesystem>
#include <optional>

#include "file_reading.h"

namespace quenchly {

/// A small file that another program writes, read again only when it may have changed.
class WatchedFile {
public:
    explicit WatchedFile(std::filesystem::path path) : path_(std::move(path)) {}

    const std::filesystem::path& path() const { return path_; }

    /// What lies there; none when it is surely what the last call gave.
    std::optional<FileReading> readIfChanged();

private:
    std::filesystem::path path_;
    std::optional<FileStamp> trustedStamp_;
};

}  // namespace quenchly
