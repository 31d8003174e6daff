#pragma once

#include <string>

namespace quenchly {

/// Takes English for the rest of the run when no font can show the language in force. Returns a line for the log that
/// says so and what helps; empty when nothing changed. Needs a QGuiApplication.
std::string takeShowableLanguage();

}  // namespace quenchly
