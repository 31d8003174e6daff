#pragma once

namespace quenchly {

/// Takes the program out of the Dock and of the application switcher; its windows can still take the focus. Needs a
/// QGuiApplication. Does nothing where programs without a main window are not listed anyway.
void becomeMenuBarApplication();

}  // namespace quenchly
