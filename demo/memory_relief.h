#pragma once

namespace quenchly::demo {

/// What the user is told while swap is critical and listed AI has models loaded.
inline constexpr const char* memoryReliefTip =
    "Extra memory on disk is high while listed AI still has models loaded. Consider Unload listed AI to free RAM "
    "before swap grows further. This does not quit apps or change Protection settings.";

}  // namespace quenchly::demo
