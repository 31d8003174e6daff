#pragma once

#include "system.h"

namespace quenchly {

/// A folder of the user's, which a variable can move.
struct UserFolder {
    const char* variable;
    const char* inHomeFolder;  ///< where it is while the variable is unset

    /// A home folder that holds everything holds this too, whatever the variable says. A relative path in the variable
    /// does not count.
    std::filesystem::path in(const System& system) const;
};

inline constexpr UserFolder settingsFolder{.variable = "XDG_CONFIG_HOME", .inHomeFolder = ".config"};
inline constexpr UserFolder dataFolder{.variable = "XDG_DATA_HOME", .inHomeFolder = ".local/share"};

}  // namespace quenchly
