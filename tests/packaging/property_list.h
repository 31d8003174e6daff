#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace quenchly::testing {

/// The values of an information property list: texts as they stand, "true" and "false", and the texts of an array
/// joined by commas. An unusual list (not well-formed, a key twice, another type) has the one key "error".
std::map<std::string, std::string> readPropertyList(const std::filesystem::path& file);

}  // namespace quenchly::testing
