#pragma once

#include <string>

#include "text.h"

namespace quenchly {

/// What the system's log is given for a line: what a system says about an error may be of any length, and a line break
/// or an escape sequence in it must not pass for a line of its own.
inline std::string logLine(const std::string& line)
{
    constexpr std::size_t maxCharacters = 1000;
    return displayLine(line, maxCharacters);
}

}  // namespace quenchly
