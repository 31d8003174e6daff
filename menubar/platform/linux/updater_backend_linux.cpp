#include "updater_backend.h"

namespace quenchly {

// Packages and stores update programs there.
std::unique_ptr<UpdaterBackend> startUpdaterBackend()
{
    return nullptr;
}

}  // namespace quenchly
