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

QString languageCodes(std::string_view beforeLast)
{
    return QString::fromStdString(L10n::languageCodes(beforeLast));
}

QString scenarioNames()
{
    QStringList names = QStringLiteral(QUENCHLY_SCENARIOS).split(u',');
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

/// An option in the help, its explanation broken where it is too long and indented behind the option.
QString optionHelp(const QString& option, const QString& explanation)
{
    constexpr int indentation = 22;
    constexpr int longestLine = 110;
    QString text;
    QString line = option.leftJustified(indentation - 1);
    for (const QString& word : explanation.split(u' ')) {
        if (line.size() + 1 + word.size() > longestLine) {
            text += line + u'\n';
            line = QString(indentation - 1, u' ');
        }
        line += u' ' + word;
    }
    return text + line + u'\n';
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
            return failure(QStringLiteral("unknown language: %1 (%2)").arg(*code, languageCodes(", ")));
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
    const QString demo =
        QStringLiteral(
            "try it on a scratch home folder with a stand-in checker; without a scenario it plays %1 in "
            "turn, until somebody changes something")
            .arg(scenarioNames());
    return QStringLiteral(
               "Usage: quenchly-menubar [options]\n"
               "Shows in the menu bar how this machine bears its local AI models.\n"
               "Starting it again opens the panel of the one that runs.\n"
               "\n"
               "  --home DIR          use DIR as the home folder for everything\n"
               "  --language CODE     %1 instead of the system's choice\n"
               "  --headless DIR      write menu-bar.png, panel.png and status.json into DIR and exit; needs no "
               "display\n"
               "%2"
               "  --version           print the version and exit\n"
               "  --help              print this and exit\n")
        .arg(languageCodes(" or "), optionHelp(QStringLiteral("  --demo [SCENARIO]"), demo));
}

}  // namespace quenchly
