#pragma once

#include <memory>

#include "login_item.h"
#include "user_defaults.h"

namespace quenchly {

// The user has one login item and one store of defaults, whatever home folder the program is given. A program that runs
// on another home folder has these instead, which are forgotten when it ends.

std::unique_ptr<LoginItem> makeLoginItemOfThisRun();
std::unique_ptr<UserDefaults> makeUserDefaultsOfThisRun();

}  // namespace quenchly
