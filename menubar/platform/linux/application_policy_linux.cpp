#include "application_policy.h"

namespace quenchly {

void becomeMenuBarApplication() {}

}  // namespace quenchly
