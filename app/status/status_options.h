#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "instant.h"
#include "l10n.h"

namespace quenchly {

/// What the command line of quenchly-status asks for.
struct StatusOptions {
    enum class Format { full, plain, json, bar, i3bar };

    Format format = Format::full;
    bool watch = false;
    bool live = true;
    bool showHelp = false;
    bool showVersion = false;
    std::filesystem::path home;  ///< absolute
    bool homeIsGiven = false;
    std::optional<std::filesystem::path> dataHome;
    std::filesystem::path launchAgents;
    std::optional<Instant> now;
    std::optional<AppLanguage> language;
    std::string error;  ///< one line; empty when the command line is understood
};

StatusOptions parseStatusOptions(int argc, char** argv);

}  // namespace quenchly
