#pragma once

#include <map>
#include <string>

namespace quenchly {

/// This program's environment without what `chooseFontsFor` changed in it.
std::map<std::string, std::string> environmentForOthers();

}  // namespace quenchly
