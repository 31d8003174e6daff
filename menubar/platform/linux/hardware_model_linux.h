#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quenchly {

/// The model of this machine in one line, as its firmware or its device tree names it; none when neither does.
/// `systemFolder` is where the kernel shows them, /sys.
std::optional<std::string> hardwareModel(const std::filesystem::path& systemFolder);

}  // namespace quenchly
