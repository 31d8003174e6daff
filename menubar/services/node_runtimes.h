#pragma once

#include <filesystem>
#include <vector>

namespace quenchly {

/// The program folders of the Node versions that nvm has installed for a user, in ascending plain text order of the
/// versions: v18 before v9.
std::vector<std::filesystem::path> nvmProgramFolders(const std::filesystem::path& homeFolder);

struct NodeSearch {
    std::filesystem::path nearCLI;  ///< the script that is to be run
    std::filesystem::path homeFolder;
    std::vector<std::filesystem::path> systemNodes;  ///< see System
};

/// Where a Node runtime may be, the best place first: beside the script, in the usual places, in the home folder, where
/// this system has it.
/// Versions of nvm come from the last by plain text order, v9 before v22.
std::vector<std::filesystem::path> nodeCandidates(const NodeSearch& search);

}  // namespace quenchly
