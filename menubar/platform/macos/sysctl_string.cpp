#include "sysctl_string.h"

#include <sys/sysctl.h>

#include <cstddef>
#include <vector>

namespace quenchly {

std::optional<std::string> sysctlString(const std::string& name)
{
    std::size_t size = 0;
    if (sysctlbyname(name.c_str(), nullptr, &size, nullptr, 0) != 0)
        return std::nullopt;
    std::vector<char> buffer(size + 1, '\0');
    if (size > 0 && sysctlbyname(name.c_str(), buffer.data(), &size, nullptr, 0) != 0)
        return std::nullopt;
    return std::string(buffer.data());
}

}  // namespace quenchly
