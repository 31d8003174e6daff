#include "descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace quenchly {

void Descriptor::close()
{
    if (number_ >= 0)
        ::close(number_);
    number_ = -1;
}

bool neverBlock(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags >= 0 && ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK) == 0;
}

}  // namespace quenchly
