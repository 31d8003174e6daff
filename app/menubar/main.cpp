#include <unistd.h>

#include <QApplication>
#include <QTemporaryDir>
#include <clocale>
#include <cstdio>
#include <optional>
#include <system_error>

#include "application_icon.h"
#include "command_line.h"
#include "demo_player.h"
#include "font_language.h"
#include "headless.h"
#include "menu_bar_application.h"
#include "product.h"
#include "qt_messages.h"
#include "quit_signals.h"
#include "running_application.h"
#include "second_start.h"
#include "showable_language.h"
#include "single_instance.h"
#include "system.h"

namespace {

using namespace quenchly;

int fail(const QString& message, int exitStatus = 1)
{
    std::fprintf(stderr, "quenchly-menubar: %s\n", qPrintable(message));
    return exitStatus;
}

QStringList argumentList(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments;
}

/// Without this, Qt would end the program with a page of advice about plugins.
bool displayIsMissing()
{
#ifdef Q_OS_MACOS
    return false;
#else
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#endif
}

void prepareEnvironment(bool headless)
{
    if (!headless)
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
}

/// The home folder to use instead of the user's.
std::optional<std::filesystem::path> homeFolder(const CommandLine& line, const std::optional<QTemporaryDir>& scratch)
{
    std::error_code ignored;
    if (line.home)
        return std::filesystem::absolute(line.home->toStdString(), ignored);
    return scratch ? std::optional(scratch->path().toStdString()) : std::nullopt;
}

/// A bundle has its own icon.
void setWindowIcon()
{
    if (QGuiApplication::platformName() != QStringLiteral("cocoa"))
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("quenchly"), applicationIcon()));
}

/// On a terminal the log shows the line too.
void tell(const System& system, const QString& message)
{
    system.log(message.toStdString());
    if (isatty(STDERR_FILENO) == 0)
        fail(message);
}

/// The language has to be one that can be read. Who waits for pictures looks at no log.
void chooseShownLanguage(const System& system, bool headless)
{
    const std::string problem = takeShowableLanguage();
    if (problem.empty())
        return;
    if (headless)
        fail(QString::fromStdString(problem));
    else
        system.log("Quenchly: " + problem);
}

int runInMenuBar(System system)
{
    SingleInstance instance(QString::fromStdString(system.homeFolder.string()));
    switch (instance.claim(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"))) {
        case SingleInstance::Outcome::handedOver:
            return 0;
        case SingleInstance::Outcome::unreachable:
            return fail(QStringLiteral("another one runs but does not answer"));
        case SingleInstance::Outcome::deaf:
            tell(system, QStringLiteral("starting it again will not open its panel: %1").arg(instance.problem()));
            break;
        case SingleInstance::Outcome::first:
            break;
    }
    StateWatcher watcher(std::move(system));
    Updater updater(watcher.system());
    MenuBarApplication application(watcher, updater, makeMenuBarExtra());
    QObject::connect(&instance, &SingleInstance::openRequested, &application,
                     [&](const QString& token) { application.open({}, token); });
    whenStartedAgain([&application] { application.open({}, {}); });
    return QApplication::exec();
}

int run(const CommandLine& line)
{
    const QuitSignals quitSignals;
    std::optional<QTemporaryDir> scratch;
    if (line.demo && !line.home && !scratch.emplace().isValid())
        return fail(QStringLiteral("there is no folder for a trial: %1").arg(scratch->errorString()));
    System system = makeSystem(homeFolder(line, scratch));
    chooseShownLanguage(system, line.headlessFolder.has_value());
    std::optional<DemoPlayer> player;
    if (line.demo) {
        DemoPlayer::adapt(system);
        player.emplace(system, line.scenario);
        if (const QString error = player->begin(); !error.isEmpty())
            return fail(error);
    }
    if (!line.headlessFolder)
        return runInMenuBar(std::move(system));

    StateWatcher watcher(withoutSideEffects(std::move(system)));
    if (const QString error = renderHeadless(watcher, *line.headlessFolder); !error.isEmpty())
        return fail(error);
    std::printf("%s: menu-bar.png, panel.png, status.json\n", qPrintable(*line.headlessFolder));
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const CommandLine line = parseCommandLine(argumentList(argc, argv));
    if (!line.error.isEmpty())
        return fail(line.error, 2);
    if (line.showHelp || line.showVersion) {
        std::fputs(line.showHelp ? qPrintable(commandLineHelp()) : "quenchly-menubar ", stdout);
        if (!line.showHelp)
            std::puts(quenchly::version);
        return 0;
    }
    if (!line.headlessFolder && displayIsMissing())
        return fail(QStringLiteral("no display; --headless DIR renders without one, quenchly-status prints"));
    prepareEnvironment(line.headlessFolder.has_value());
    quenchly::L10n::testingLanguage = line.language;
    quenchly::chooseFontsFor(quenchly::L10n::language());

    silenceRuntimeFolderWarnings();
    QApplication application(argc, argv);
    // QApplication has just taken over the user's locale, and the JSON library reads numbers by the C library's.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("quenchly-menubar"));
    QApplication::setApplicationVersion(QString::fromLatin1(quenchly::version));
    QApplication::setDesktopFileName(QStringLiteral("quenchly"));
    QApplication::setQuitOnLastWindowClosed(false);
    setWindowIcon();
    quenchly::makeRunningApplication()->setActivationPolicy(quenchly::ActivationPolicy::accessory);
    return run(line);
}
