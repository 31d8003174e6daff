#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "file_reading.h"
#include "instant.h"

namespace quenchly {

/// A small file that another program writes, read again only when it may have changed.
class WatchedFile {
public:
    /// `now` tells what time it is on the clock that stamps files.
    WatchedFile(std::filesystem::path path, std::function<Instant()> now) : path_(std::move(path)), now_(std::move(now))
    {
    }

    const std::filesystem::path& path() const { return path_; }

    /// What lies there; none when it is surely what the last call gave.
    std::optional<FileReading> readIfChanged();

private:
    bool isSettled(const FileStamp& stamp) const;

    std::filesystem::path path_;
    std::function<Instant()> now_;
    std::optional<FileStamp> trustedStamp_;
};

}  // namespace quenchly
