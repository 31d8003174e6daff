#include "compositing.h"

namespace quenchly {

bool windowsMayBeTranslucent()
{
    return true;
}

}  // namespace quenchly
