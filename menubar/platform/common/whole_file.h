#pragma once

#include <QByteArray>
#include <filesystem>
#include <string>

namespace quenchly {

/// Puts a file with these bytes in the place of what is at `path`. The error's text, empty when it succeeded; else what
/// was there before is untouched, also on a full disk.
std::string writeWholeFile(const std::filesystem::path& path, const QByteArray& bytes);

}  // namespace quenchly
