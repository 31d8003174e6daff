#include "descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace quenchly::demo {

Descriptor::~Descriptor()
{
    if (number_ >= 0)
        ::close(number_);
}

bool neverBlock(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags >= 0 && ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK) == 0;
}

}  // namespace quenchly::demo
