#pragma once

#include <string>

namespace quenchly {

/// Replaces what the user has copied by this plain text. Interface thread; needs a QGuiApplication.
void copyToPasteboard(const std::string& text);

}  // namespace quenchly
