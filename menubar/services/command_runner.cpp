#include "command_runner.h"

#include <unistd.h>

#include <string_view>
#include <system_error>

#include "working_copy.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

constexpr const char* toolName = "quenchly";

bool isUsable(const fs::path& file)
{
    std::error_code ignored;
    return fs::is_regular_file(file, ignored) && access(file.c_str(), X_OK) == 0;
}

std::optional<fs::path> findInDevelopmentTree(const fs::path& currentDirectory)
{
    const auto script = [](const fs::path& directory) { return directory / "dist/quenchly.mjs"; };
    const auto tree = nearestDirectory(currentDirectory, [&](const fs::path& d) { return isUsable(script(d)); });
    return tree ? std::optional(script(*tree)) : std::nullopt;
}

/// The first hit among the folders of PATH, as the shell would find it.
std::optional<fs::path> findOnPath(const System& system)
{
    const auto variable = system.environment.find("PATH");
    if (variable == system.environment.end())
        return std::nullopt;
    std::string_view rest = variable->second;
    while (!rest.empty()) {
        const auto colon = rest.find(':');
        fs::path tool = system.currentDirectory / rest.substr(0, colon) / toolName;
        if (isUsable(tool))
            return tool;
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    return std::nullopt;
}

}  // namespace

std::optional<fs::path> CLIRunner::locate(const System& system)
{
    if (const fs::path shipped = system.executableFolder / toolName; isUsable(shipped))
        return shipped;
    if (const auto script = findInDevelopmentTree(system.currentDirectory))
        return script;
    return findOnPath(system);
}

}  // namespace quenchly
