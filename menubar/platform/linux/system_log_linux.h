#pragma once

#include <string>

namespace quenchly {

/// Writes a line to the journal, and to standard error too when that is a terminal. Any thread.
void writeToSystemLog(const std::string& line);

}  // namespace quenchly
