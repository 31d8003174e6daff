#include "this_computer.h"

namespace quenchly {

bool thisComputerIsAMac() noexcept
{
    return true;
}

}  // namespace quenchly
