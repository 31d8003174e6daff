#include "application_item_linux.h"

#include "path_below.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

fs::path absolutePath(const std::map<std::string, std::string>& environment, const char* name)
{
    const auto variable = environment.find(name);
    const fs::path path = variable == environment.end() ? fs::path() : fs::path(variable->second);
    return path.is_absolute() ? path.lexically_normal() : fs::path();
}

}  // namespace

fs::path applicationItem(const fs::path& executable, const std::map<std::string, std::string>& environment)
{
    const fs::path image = absolutePath(environment, "APPIMAGE");
    // A terminal that is an AppImage hands its own variables on to what is started in it.
    const bool isOurs = isBelow(absolutePath(environment, "APPDIR"), executable);
    return !image.empty() && isOurs ? image : executable;
}

}  // namespace quenchly
