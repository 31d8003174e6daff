#pragma once

#include <string>
#include <string_view>

namespace quenchly::demo {

/// The text as it stands in XML and HTML, between tags and in quoted attributes. Control characters are shown as
/// replacement characters.
std::string escaped(std::string_view text);

}  // namespace quenchly::demo
