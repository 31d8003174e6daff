#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace quenchly {

/// Called once, perhaps on another thread: empty on success, else the reason as the system words it.
using TrashCompletion = std::function<void(const std::string& error)>;

void moveToTrash(const std::filesystem::path& item, const TrashCompletion& completion);

}  // namespace quenchly
