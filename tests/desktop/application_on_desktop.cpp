#include "application_on_desktop.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <ostream>

#include "desktop.h"

namespace quenchly::testing {
namespace {

constexpr int panelWidth = 380;  // points
constexpr const char* runsFile = "runs";
constexpr const char* addressesFile = "addresses";
constexpr const char* logFile = "log";

double scale()
{
    const double given = qEnvironmentVariable("SESSION_SCALE").toDouble();
    return given > 0 ? given : 1;
}

void writeScript(const QString& path, const QByteArray& text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

int numberIn(const QString& geometry, const char* name)
{
    return geometry.section(QLatin1String(name) + u'=', 1).section(u'\n', 0, 0).toInt();
}

OpenWindow windowOf(const QString& id)
{
    const QString geometry =
        run(QStringLiteral("xdotool"), {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), id});
    return {.title = run(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), id}).trimmed(),
            .geometry = QRect(numberIn(geometry, "X"), numberIn(geometry, "Y"), numberIn(geometry, "WIDTH"),
                              numberIn(geometry, "HEIGHT"))};
}

/// The process whose window has the focus.
qint64 processInFront()
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow"), QStringLiteral("getwindowpid")})
        .toLongLong();
}

}  // namespace

void PrintTo(const ShownAlert& alert, std::ostream* out)
{
    *out << alert.title.toStdString() << '\n'
         << alert.text.toStdString() << '\n'
         << alert.buttons.join(QStringLiteral(" | ")).toStdString() << "; Return presses "
         << alert.pressedByReturn.toStdString();
}

void ApplicationOnDesktop::SetUp()
{
    program = QStringLiteral(QUENCHLY_MENUBAR_PATH);
    ASSERT_TRUE(barIsThere());
    moveTo(idlePosition());
    ASSERT_TRUE(QFile::link(QStringLiteral(QUENCHLY_DEMO_TOOL_PATH), tools.filePath(QStringLiteral("quenchly"))));
    writeScript(tools.filePath(QStringLiteral("xdg-open")),
                "#!/bin/sh\nprintf '%s\\n' \"$1\" >>\"${0%/*}/" + QByteArray(addressesFile) + "\"\n");
    AccessibilityTree::announceAssistance();
}

void ApplicationOnDesktop::TearDown()
{
    if (HasFailure())
        keepPicture(QStringLiteral("failed-") +
                    QLatin1String(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    application.terminate();
    if (!application.waitForFinished())
        application.kill();
    application.waitForFinished();
    EXPECT_TRUE(waitFor([] { return iconOnBar().isNull(); }));
}

void ApplicationOnDesktop::playScenario(const char* name)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QUENCHLY_HOME"),
                       home.filePath(QStringLiteral("Library/Application Support/Quenchly")));
    environment.insert(QStringLiteral("QUENCHLY_LAUNCH_AGENTS"), home.filePath(QStringLiteral("Library/LaunchAgents")));
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral(QUENCHLY_DEMO_TOOL_PATH), {QStringLiteral("scenario"), QLatin1String(name)});
    ASSERT_TRUE(tool.waitForFinished());
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
}

void ApplicationOnDesktop::startApplication(const std::map<QString, QString>& variables, const char* language)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), tools.path() + u':' + qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("QUENCHLY_LAUNCH_AGENTS"), home.filePath(QStringLiteral("Library/LaunchAgents")));
    environment.insert(QStringLiteral("QUENCHLY_DEMO_LOG"), tools.filePath(QLatin1String(runsFile)));
    if (scale() != 1)
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scale()));
    for (const auto& [name, value] : variables)
        environment.insert(name, value);
    application.setProcessChannelMode(channels);
    application.setProcessEnvironment(environment);
    application.start(program,
                      {QStringLiteral("--home"), home.path(), QStringLiteral("--language"), QLatin1String(language)});
    ASSERT_TRUE(application.waitForStarted());
}

void ApplicationOnDesktop::showScenario(const char* name)
{
    playScenario(name);
    startApplication();
    ASSERT_TRUE(waitFor([] { return !iconOnBar().isNull(); }));
}

std::vector<OpenWindow> ApplicationOnDesktop::windows() const
{
    const QStringList ids =
        run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                        QStringLiteral("--pid"), QString::number(application.processId())})
            .split(u'\n', Qt::SkipEmptyParts);
    std::vector<OpenWindow> found;
    for (const QString& id : ids) {
        const OpenWindow window = windowOf(id);
        if (window.geometry.width() > 2 * iconSize)
            found.push_back(window);
    }
    return found;
}

QRect ApplicationOnDesktop::windowTitled(const QString& title) const
{
    for (const OpenWindow& window : windows())
        if (window.title == title)
            return window.geometry;
    return {};
}

QRect ApplicationOnDesktop::panel() const
{
    const QRect found = windowTitled(QStringLiteral("Quenchly"));
    return found.width() == inPixels(QRect(0, 0, panelWidth, 1)).width() ? found
                                                                         : QRect();  // an alert has the title too
}

QRect ApplicationOnDesktop::popover() const
{
    return windowTitled(QStringLiteral("Help"));
}

void ApplicationOnDesktop::openPanel()
{
    const QRect icon = restingIcon();
    ASSERT_FALSE(icon.isNull());
    click(icon.center());
    moveTo(idlePosition());
    ASSERT_TRUE(waitFor([this] { return !panel().isEmpty(); }));
    waitUntilActive();
}

void ApplicationOnDesktop::waitUntilActive() const
{
    ASSERT_TRUE(waitFor([this] {
        const std::vector<Accessible> showing = tree().showing();
        return !showing.empty() && showing.front().is(Accessible::State::active);
    }));
}

std::vector<Accessible> ApplicationOnDesktop::named(const QString& name) const
{
    std::vector<Accessible> found = tree().showing();
    std::erase_if(found, [&](const Accessible& object) { return object.name != name; });
    return found;
}

QRect ApplicationOnDesktop::inPixels(const QRect& points)
{
    return {points.topLeft() * scale(), points.size() * scale()};
}

QRect ApplicationOnDesktop::buttonNamed(const QString& name, std::size_t place) const
{
    std::vector<Accessible> buttons = named(name);
    std::erase_if(buttons, [](const Accessible& object) {
        return object.role != Accessible::Role::pushButton || !object.is(Accessible::State::sensitive);
    });
    return place < buttons.size() ? inPixels(tree().place(buttons[place])) : QRect();
}

void ApplicationOnDesktop::clickButton(const QString& name, std::size_t place)
{
    QRect found;
    ASSERT_TRUE(waitFor([&] {
        found = buttonNamed(name, place);
        if (found.isEmpty())
            return false;
        moveTo(found.center());
        return buttonNamed(name, place) == found;
    })) << name.toStdString();
    click(found.center());
}

Accessible ApplicationOnDesktop::focused() const
{
    for (const Accessible& object : tree().showing())
        if (object.is(Accessible::State::focused) && object.isControl())
            return object;
    return {};
}

void ApplicationOnDesktop::chooseRow(const QString& name)
{
    constexpr int mostControls = 40;
    for (int step = 0; step < mostControls && focused().name != name; ++step) {
        const QString before = focused().path;
        press("shift+Tab");
        ASSERT_TRUE(waitFor([&] { return focused().path != before; })) << name.toStdString();
    }
    ASSERT_EQ(focused().name, name);
    press("Return");
}

ShownAlert ApplicationOnDesktop::shownAlert() const
{
    const std::vector<Accessible> showing = tree().showing();
    const auto alert = std::ranges::find(showing, Accessible::Role::alert, &Accessible::role);
    ShownAlert shown;
    if (alert == showing.end() || !alert->is(Accessible::State::active))
        return shown;
    for (const Accessible& object : std::vector(alert, showing.end())) {
        if (object.role == Accessible::Role::label)
            (shown.title.isEmpty() ? shown.title : shown.text) += object.name;
        if (object.role == Accessible::Role::pushButton)
            shown.buttons += object.name;
        if (object.is(Accessible::State::isDefault) && object.is(Accessible::State::focused))
            shown.pressedByReturn += object.name;
    }
    return shown;
}

void ApplicationOnDesktop::expectAlert(const ShownAlert& alert)
{
    const auto isThere = [&] { return shownAlert() == alert && panel().isEmpty() && hasWindows(1); };
    const bool came = waitFor(isThere);
    ASSERT_EQ(shownAlert(), alert);
    ASSERT_TRUE(came) << "the panel or another window stayed";
    ASSERT_TRUE(waitFor([this] { return processInFront() == application.processId(); }));
    for (const OpenWindow& window : windows())
        EXPECT_TRUE(workArea().contains(window.geometry));
}

void ApplicationOnDesktop::expectNoWindows()
{
    EXPECT_TRUE(waitFor([this] { return hasWindows(0); }));
    EXPECT_EQ(application.state(), QProcess::Running);
}

bool ApplicationOnDesktop::opensAtLogin() const
{
    QFile file(autostartFile());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = file.readAll();
    return text.startsWith("[Desktop Entry]\n") && text.contains("\nExec=") && !text.contains("\nHidden=true\n") &&
           !text.contains("\nX-GNOME-Autostart-enabled=false\n");
}

QString ApplicationOnDesktop::launchAgentFile() const
{
    return home.filePath(QStringLiteral("Library/LaunchAgents/com.brindlemoor.quenchly.plist"));
}

std::map<QString, QString> ApplicationOnDesktop::logCaught() const
{
    // In a build with the address sanitizer its runtime comes only after what is preloaded.
    const QString sanitizer = qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":verify_asan_link_order=0");
    return {{QStringLiteral("LD_PRELOAD"), QStringLiteral(QUENCHLY_LOG_CATCHER_PATH)},
            {QStringLiteral("ASAN_OPTIONS"), sanitizer},
            {QStringLiteral("QUENCHLY_CAUGHT_LOG"), tools.filePath(QLatin1String(logFile))}};
}

QStringList ApplicationOnDesktop::logLines() const
{
    return linesOf(logFile);
}

QStringList ApplicationOnDesktop::linesOf(const char* file) const
{
    QFile lines(tools.filePath(QLatin1String(file)));
    if (!lines.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(lines.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

QStringList ApplicationOnDesktop::toolRuns() const
{
    QStringList runs;
    for (const QString& line : linesOf(runsFile)) {
        QStringList words;
        for (const QJsonValue& word : QJsonDocument::fromJson(line.toUtf8()).array())
            words += word.toString();
        runs += words.join(u' ');
    }
    return runs;
}

QStringList ApplicationOnDesktop::openedAddresses() const
{
    return linesOf(addressesFile);
}

}  // namespace quenchly::testing
