#pragma once

#include <string>
#include <vector>

namespace quenchly {

/// The tags of the user's preferred languages, such as "zh_TW" or "fil-PH", most preferred first, found anew on every
/// call. On Linux they come from LANGUAGE, LC_ALL, LC_MESSAGES and LANG, in the order and with the exceptions that
/// gettext gives them.
std::vector<std::string> preferredLanguages();

}  // namespace quenchly
