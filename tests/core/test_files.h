#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "text.h"

namespace quenchly {

/// GoogleTest shows a text as it reads.
void PrintTo(const Text& text, std::ostream* out);

namespace testing {

/// What a file holds; nothing where it cannot be read.
std::string contentOf(const std::filesystem::path& file);

/// A fresh, empty folder of its own, removed with everything in it at the end. Paths are relative to it; the folders on
/// the way are made.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const noexcept { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& relative) const { return path_ / relative; }

    std::filesystem::path write(const std::filesystem::path& relative, std::string_view bytes) const;

    /// As the checker writes: a new file is moved over the old one, which nobody ever sees half written.
    std::filesystem::path replace(const std::filesystem::path& relative, std::string_view bytes) const;

    /// A file of `size` bytes that takes no room on the disk: `bytes`, then zeros.
    std::filesystem::path writeSparse(const std::filesystem::path& relative, std::string_view bytes,
                                      std::uintmax_t size) const;

    std::filesystem::path makeFolder(const std::filesystem::path& relative) const;
    std::filesystem::path makeFifo(const std::filesystem::path& relative) const;
    std::filesystem::path makeLink(const std::filesystem::path& relative, const std::filesystem::path& target) const;

private:
    std::filesystem::path prepared(const std::filesystem::path& relative) const;

    std::filesystem::path path_;
};

/// While this lives the file permissions hold for the process even when it was started by root.
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    bool inForce() const noexcept;

private:
    uid_t before_;
};

/// The user "nobody" where this process is root's and may act as another; else none.
std::optional<uid_t> anotherUser();

/// Runs the task in a child process of that user. False when the task said so or threw.
bool runAsAnotherUser(uid_t user, const std::function<bool()>& task);

}  // namespace testing
}  // namespace quenchly
