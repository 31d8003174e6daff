#pragma once

namespace quenchly {

/// What is written below a folder of settings.
inline constexpr const char* autostartFile = "autostart/quenchly.desktop";
inline constexpr const char* defaultsFile = "quenchly/settings.ini";

}  // namespace quenchly
