#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace quenchly {

/// Called once, perhaps on another thread: empty on success, else the reason as the system words it.
using TrashCompletion = std::function<void(const std::string& error)>;

/// Moves an item into the Trash.
using Trash = std::function<void(const std::filesystem::path& item, const TrashCompletion& completion)>;

/// `dataFolder` is where a Trash lies that is a folder. Not used by systems that keep theirs otherwise.
Trash makeTrash(const std::filesystem::path& dataFolder);

}  // namespace quenchly
