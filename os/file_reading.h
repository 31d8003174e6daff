#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace quenchly {

/// What tells one content of a file from another without reading it. Times are nanoseconds since 1970.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedAt = 0;
    std::int64_t changedAt = 0;

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of what lies at `path`, links followed; none when there is nothing.
std::optional<FileStamp> fileStamp(const std::filesystem::path& path) noexcept;

/// The outcome of reading a small file.
struct FileReading {
    enum class Outcome {
        read,
        missing,     ///< nothing exists at the path (a link to nothing counts as nothing)
        unreadable,  ///< something exists that cannot be read as a file: no permission, a folder, a FIFO, a device
        tooLarge,    ///< a file of more than `maxFileBytes`
    };
    Outcome outcome = Outcome::missing;
    std::string bytes;  ///< empty unless read
    FileStamp stamp;    ///< taken before the first byte was read; only when read or too large
};

/// None of the files that are read comes near this; reading more every second would weigh on the machine.
inline constexpr std::size_t maxFileBytes = std::size_t{2} * 1024 * 1024;

/// Reads the whole file at `path`. Never blocks on a FIFO or device, never throws.
FileReading readFile(const std::filesystem::path& path);

/// Whether anything exists at `path`, links followed. False also when it cannot be told.
bool fileExists(const std::filesystem::path& path) noexcept;

}  // namespace quenchly
