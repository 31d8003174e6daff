#include "current_instant.h"

namespace quenchly {

Instant currentInstant()
{
    return std::chrono::floor<Instant::duration>(std::chrono::system_clock::now());
}

}  // namespace quenchly
