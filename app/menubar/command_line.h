#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "l10n.h"

namespace quenchly {

/// What the command line of the application asks for.
struct CommandLine {
    std::optional<QString> home;
    std::optional<AppLanguage> language;
    std::optional<QString> headlessFolder;
    bool demo = false;
    QString scenario;  ///< empty: the demo plays all of them
    bool showVersion = false;
    bool showHelp = false;
    QString error;  ///< one line; empty when the command line is understood
};

/// `arguments` begins with the program's name. Needs no application object.
CommandLine parseCommandLine(const QStringList& arguments);

/// What --help prints.
QString commandLineHelp();

}  // namespace quenchly
