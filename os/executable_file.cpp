#include "executable_file.h"

#include <unistd.h>

#include <system_error>

namespace quenchly {

bool isExecutableFile(const std::filesystem::path& file)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) && access(file.c_str(), X_OK) == 0;
}

}  // namespace quenchly
