#pragma once

#include <chrono>

namespace quenchly {

/// Lets the time pass. True, and at once, when nobody can read any more what is written into the descriptor: the other
/// end of a pipe or a socket is closed, or a terminal hung up. A file always has a reader.
bool readerIsGoneWithin(int descriptor, std::chrono::milliseconds time);

}  // namespace quenchly
