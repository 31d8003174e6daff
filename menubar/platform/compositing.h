#pragma once

namespace quenchly {

/// Whether what is behind a window shows through where the window paints nothing. Asked anew on every call; needs a
/// QGuiApplication.
bool windowsMayBeTranslucent();

}  // namespace quenchly
