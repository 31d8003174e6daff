#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

/// Finds the folder into which the checker writes.
namespace quenchly::StateFileResolver {

struct Surroundings {
    std::map<std::string, std::string> env;
    std::filesystem::path homeFolder;
    /// What the environment and the current directory name counts only if it leads below the home folder.
    bool keepsToHomeFolder = false;
    std::filesystem::path currentDirectory;  ///< absolute; empty when it cannot be read
};

struct Resolution {
    std::filesystem::path dataHome;  ///< the parent of the chosen "state" folder
    std::filesystem::path state;     ///< the heat state file, which need not exist
};

/// The first candidate whose heat state file exists: the environment's folder, the default, the test folder, a working
/// copy around the current directory. The default when there is none. Never fails.
Resolution resolve(const Surroundings& surroundings);

/// The nearest "state" folder with a heat state file in the given directory or its six nearest ancestors. One that
/// another user could change is passed over.
std::optional<std::filesystem::path> devRepoStateDir(const std::filesystem::path& currentDirectory);

}  // namespace quenchly::StateFileResolver
