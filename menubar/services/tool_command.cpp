#include "tool_command.h"

#include <algorithm>
#include <string_view>

namespace quenchly {

std::vector<std::string> ToolRun::arguments() const
{
    std::vector<std::string> words;
    const std::string_view typed = rawValue(command_);
    for (std::size_t start = 0; start < typed.size();) {
        const std::size_t end = std::min(typed.find(' ', start), typed.size());
        const std::string_view word = typed.substr(start, end - start);
        words.push_back(word == "ID" ? id_ : std::string(word));
        start = end + 1;
    }
    return words;
}

}  // namespace quenchly
