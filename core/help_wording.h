#pragma once

#include <string>
#include <string_view>

#include "app_language.h"

namespace quenchly::HelpWording {

/// A help paragraph in `language` with a computer in place of the Mac that its table speaks of: the word, what agrees
/// with it and the spaces around it. Names that only contain the word, such as "MacBook", stay.
std::string withComputerForMac(std::string_view paragraph, AppLanguage language);

}  // namespace quenchly::HelpWording
