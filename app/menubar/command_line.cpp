#include "command_line.h"

#include <QCommandLineParser>

namespace quenchly {
namespace {

struct Options {
    QCommandLineOption home{QStringLiteral("home"), {}, QStringLiteral("DIR")};
    QCommandLineOption language{QStringLiteral("language"), {}, QStringLiteral("CODE")};
    QCommandLineOption headless{QStringLiteral("headless"), {}, QStringLiteral("DIR")};
    QCommandLineOption demo{QStringLiteral("demo")};
    QCommandLineOption version{QStringLiteral("version")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}};
};

std::optional<QString> value(const QCommandLineParser& parser, const QCommandLineOption& option)
{
    return parser.isSet(option) ? std::optional(parser.value(option)) : std::nullopt;
}

CommandLine failure(const QString& error)
{
    CommandLine result;
    result.error = error;
    return result;
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments)
{
    const Options options;
    QCommandLineParser parser;
    parser.addOptions({options.home, options.language, options.headless, options.demo, options.version, options.help});
    if (!parser.parse(arguments))
        return failure(parser.errorText());

    CommandLine result;
    result.home = value(parser, options.home);
    result.headlessFolder = value(parser, options.headless);
    result.demo = parser.isSet(options.demo);
    result.showVersion = parser.isSet(options.version);
    result.showHelp = parser.isSet(options.help);
    if (const auto code = value(parser, options.language)) {
        result.language = L10n::languageForCode(code->toStdString());
        if (!result.language)
            return failure(QStringLiteral("unknown language: %1 (en, ja, fil, zh-Hans, zh-Hant, ko)").arg(*code));
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > (result.demo ? 1 : 0))
        return failure(QStringLiteral("unexpected argument: %1").arg(positional.last()));
    result.scenario = positional.value(0);
    for (const auto& folder : {result.home, result.headlessFolder})
        if (folder && folder->isEmpty())
            return failure(QStringLiteral("a folder's name is empty"));
    return result;
}

QString commandLineHelp()
{
    return QStringLiteral(
        "Usage: quenchly-menubar [options]\n"
        "Shows in the menu bar how this machine bears its local AI models.\n"
        "Starting it again opens the panel of the one that runs.\n"
        "\n"
        "  --home DIR          use DIR as the home folder for everything\n"
        "  --language CODE     en, ja, fil, zh-Hans, zh-Hant or ko instead of the system's choice\n"
        "  --headless DIR      write menu-bar.png, panel.png and status.json into DIR and exit; needs no display\n"
        "  --demo [SCENARIO]   try it on a scratch home folder with a stand-in checker; without a scenario it plays\n"
        "                      calm, overload, holding, easing, false-heat, swap-critical, set-aside, stale,\n"
        "                      protection-off and not-set-up in turn, until somebody changes something\n"
        "  --version           print the version and exit\n"
        "  --help              print this and exit\n");
}

}  // namespace quenchly
