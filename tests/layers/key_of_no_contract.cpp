#include "json_object.h"

namespace quenchly {

bool isHot(const JsonObject& state)
{
#ifdef MISTAKE
    return state.boolean("warm");
#else
    return state.boolean("hot");
#endif
}

}  // namespace quenchly
