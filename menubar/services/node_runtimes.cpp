#include "node_runtimes.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace quenchly {

namespace fs = std::filesystem;

std::vector<fs::path> nvmProgramFolders(const fs::path& homeFolder)
{
    const fs::path versionsFolder = homeFolder / ".nvm/versions/node";
    std::vector<std::string> versions;
    std::error_code error;
    fs::directory_iterator entry(versionsFolder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        versions.push_back(entry->path().filename().string());
    std::ranges::sort(versions);  // by their bytes

    std::vector<fs::path> folders;
    for (const std::string& version : versions)
        folders.push_back(versionsFolder / version / "bin");
    return folders;
}

std::vector<fs::path> nodeCandidates(const NodeSearch& search)
{
    const fs::path beside = search.nearCLI.parent_path();
    std::vector<fs::path> candidates{beside / "node", beside / "qn-node", "/opt/homebrew/bin/node",
                                     "/usr/local/bin/node"};
    const auto folders = nvmProgramFolders(search.homeFolder);
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
        candidates.push_back(*folder / "node");
    candidates.push_back(search.homeFolder / "local/node24/bin/node");
    candidates.insert(candidates.end(), search.systemNodes.begin(), search.systemNodes.end());
    return candidates;
}

}  // namespace quenchly
