#include "this_computer.h"

namespace quenchly {

bool thisComputerIsAMac() noexcept
{
    return false;
}

}  // namespace quenchly
