#pragma once

#include <string>

#include "instant.h"
#include "quench_status.h"

namespace quenchly {

/// The status as a person reads it in a terminal, several lines.
std::string fullStatus(const QuenchStatus& status, Instant now);

/// One line of text, as beside the glyph in the menu bar.
std::string plainStatus(const QuenchStatus& status, Instant now);

/// One line of JSON with "text", "tooltip" and "class", as the custom modules of status bars read it. The first two
/// are escaped, because those modules read markup.
std::string barStatus(const QuenchStatus& status, Instant now);

/// One line of JSON with one block of the i3bar protocol: "full_text", and "color" unless the glyph is grey.
std::string i3barStatus(const QuenchStatus& status, Instant now);

}  // namespace quenchly
