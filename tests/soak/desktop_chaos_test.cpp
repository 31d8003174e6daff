// How often each thing happens is the number in SOAK_ROUNDS.

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "application_on_desktop.h"
#include "bar.h"
#include "desktop.h"
#include "process_facts.h"

namespace quenchly {
namespace {

using namespace testing;

constexpr int mostLinesPrinted = 10;

int rounds()
{
    const int given = qEnvironmentVariableIntValue("SOAK_ROUNDS");
    return given > 0 ? given : 2;
}

/// What the descriptors of a process lead to, but for what comes and goes without it: the wake-up calls of Qt's
/// helpers, and the caches of icons, which whoever installs a package on this machine renews.
QStringList descriptorsOf(qint64 process)
{
    QStringList found;
    const QDir folder(QStringLiteral("/proc/%1/fd").arg(process));
    for (const QString& entry : folder.entryList(QDir::System | QDir::AllEntries | QDir::NoDotAndDotDot)) {
        QString target = QFile::symLinkTarget(folder.filePath(entry)).section(u'/', -1);
        target.remove(QRegularExpression(QStringLiteral("[0-9]+")));
        if (!target.contains(QStringLiteral("eventfd")) && !target.contains(QStringLiteral("icon-theme.cache")))
            found += target;
    }
    found.sort();
    return found;
}

char stateOf(qint64 process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string skipped;
    char state = 0;
    file >> skipped >> skipped >> state;
    return state;
}

std::vector<qint64> childrenOf(qint64 process)
{
    std::vector<qint64> children;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        std::ifstream file(tasks.filePath(task + QStringLiteral("/children")).toStdString());
        for (qint64 child = 0; file >> child;)
            children.push_back(child);
    }
    return children;
}

class ChaosTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        channels = QProcess::SeparateChannels;
        ApplicationOnDesktop::SetUp();
    }

    void TearDown() override
    {
        ApplicationOnDesktop::TearDown();
        if (!barRuns())
            startBar();
    }

    static void TearDownTestSuite() { endBar(); }

    /// A press on the item opens the panel inside the work area, and another closes it.
    void expectTheItemWorks()
    {
        ASSERT_TRUE(openByClick());
        EXPECT_TRUE(waitFor([this] { return workArea().contains(panel()); }));
        closeByClick();
    }

    bool openByClick()
    {
        const QRect icon = restingIcon();
        if (icon.isNull())
            return false;
        click(icon.center());
        moveTo(idlePosition());
        return waitFor([this] { return !panel().isEmpty(); });
    }

    void closeByClick()
    {
        click(restingIcon().center());
        moveTo(idlePosition());
        EXPECT_TRUE(waitFor([this] { return panel().isEmpty(); }));
    }

    /// When everything has been used once.
    void rememberWhatItHolds()
    {
        expectTheItemWorks();
        atFirst_ = descriptorsOf(application.processId());
    }

    void expectNothingLeft()
    {
        EXPECT_TRUE(waitFor([this] { return descriptorsOf(application.processId()) == atFirst_; }))
            << descriptorsOf(application.processId()).join(u' ').toStdString() << "\nand at first\n"
            << atFirst_.join(u' ').toStdString();
        for (const qint64 child : childrenOf(application.processId()))
            EXPECT_NE(stateOf(child), 'Z');
        const QByteArray printed = application.readAllStandardError() + application.readAllStandardOutput();
        EXPECT_LE(printed.count('\n'), mostLinesPrinted) << printed.constData();
    }

private:
    QStringList atFirst_;
};

TEST_F(ChaosTest, TheIconOutlivesEveryRestartOfTheBar)
{
    showScenario("holding");
    rememberWhatItHolds();
    for (int round = 0; round < rounds(); ++round) {
        if (round % 2 == 1) {
            ASSERT_TRUE(openByClick());
        }
        killBar();
        ASSERT_TRUE(waitFor([] { return iconOnBar().isNull(); }));
        startBar();
        ASSERT_TRUE(waitFor([] { return !iconOnBar().isNull(); })) << "round " << round;
        if (!panel().isEmpty())
            closeByClick();
        expectTheItemWorks();
    }
    expectNothingLeft();
}

/// A session bus of its own and a bar on it.
class OwnSession {
public:
    ~OwnSession() { kill(); }

    QString address() const { return QStringLiteral("unix:path=") + folder_.filePath(QStringLiteral("bus")); }

    void start()
    {
        bus_.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                    QStringLiteral("--print-address"), QStringLiteral("--address=") + address()});
        ASSERT_TRUE(bus_.waitForReadyRead());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address());
        bar_.setProcessEnvironment(environment);
        bar_.setStandardErrorFile(QProcess::nullDevice());
        bar_.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
        ASSERT_TRUE(bar_.waitForStarted());
    }

    /// Whether its tray knows an item.
    bool hasItem() const
    {
        const QString name = QStringLiteral("own-session");
        const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
        QDBusMessage question =
            QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                           QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << watcher << QStringLiteral("RegisteredStatusNotifierItems");
        const QDBusMessage answer = QDBusConnection::connectToBus(address(), name).call(question);
        QDBusConnection::disconnectFromBus(name);
        return !answer.arguments().value(0).value<QDBusVariant>().variant().toStringList().isEmpty();
    }

    /// The bus first, whereupon the bar may end by itself.
    void kill()
    {
        for (QProcess* process : {&bus_, &bar_}) {
            process->kill();
            process->waitForFinished();
        }
    }

private:
    QTemporaryDir folder_;
    QProcess bus_;
    QProcess bar_;
};

TEST_F(ChaosTest, TheIconComesBackWithANewSessionBus)
{
    constexpr int withoutBus = 3000;            // milliseconds
    constexpr double mostProcessorTime = 1000;  // of them, which leaves no room for a loop without end
    killBar();
    OwnSession session;
    session.start();
    playScenario("holding");
    startApplication({{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address()}});
    ASSERT_TRUE(waitFor([] { return !iconOnBar().isNull(); }));
    rememberWhatItHolds();
    const auto process = static_cast<pid_t>(application.processId());
    for (int round = 0; round < rounds(); ++round) {
        if (round % 2 == 1) {
            ASSERT_TRUE(openByClick());
        }
        session.kill();
        const double before = bench::factsOf(process).processorMilliseconds;
        QTest::qWait(withoutBus);
        ASSERT_EQ(application.state(), QProcess::Running);
        EXPECT_LT(bench::factsOf(process).processorMilliseconds - before, mostProcessorTime);
        session.start();
        ASSERT_TRUE(waitFor([&] { return session.hasItem() && !iconOnBar().isNull(); })) << "round " << round;
        if (!panel().isEmpty())
            closeByClick();
        expectTheItemWorks();
    }
    keepPicture(QStringLiteral("after-a-new-session-bus"));
    expectNothingLeft();
}

TEST_F(ChaosTest, TheOpenPanelStaysInsideAScreenThatChangesItsSize)
{
    showScenario("set-aside");
    rememberWhatItHolds();
    const QString whole = QStringLiteral("%1x%2")
                              .arg(QGuiApplication::primaryScreen()->size().width())
                              .arg(QGuiApplication::primaryScreen()->size().height());
    ASSERT_TRUE(openByClick());
    for (int round = 0; round < (rounds() + 1) / 2; ++round) {
        for (const QString& size :
             {QStringLiteral("800x600"), QStringLiteral("640x480"), QStringLiteral("1024x768"), whole}) {
            run(QStringLiteral("xrandr"), {QStringLiteral("--size"), size});
            const int width = size.section(u'x', 0, 0).toInt();
            ASSERT_TRUE(waitFor([&] { return QGuiApplication::primaryScreen()->size().width() == width; }))
                << size.toStdString();
            EXPECT_TRUE(waitFor([this] { return !panel().isEmpty() && workArea().contains(panel()); }))
                << size.toStdString() << " " << panel().left() << " " << panel().top() << " " << panel().width() << " "
                << panel().height();
            ASSERT_TRUE(screenRests());
            keepPicture(QStringLiteral("screen-of-") + size);
        }
    }
    closeByClick();
    expectTheItemWorks();
    expectNothingLeft();
}

/// What X11 desktops tell programs of their scale.
void setScale(int scale)
{
    QProcess program;
    program.start(QStringLiteral("xrdb"), {QStringLiteral("-nocpp"), QStringLiteral("-merge")});
    ASSERT_TRUE(program.waitForStarted());
    program.write("Xft.dpi: " + QByteArray::number(96 * scale) + "\n");
    program.closeWriteChannel();
    ASSERT_TRUE(program.waitForFinished());
    ASSERT_EQ(program.exitCode(), 0);
}

/// Qt asks an X11 desktop for its scale when a program starts, and not again.
TEST_F(ChaosTest, ANewScaleOfTheScreenHoldsFromTheNextStartOn)
{
    showScenario("calm");
    rememberWhatItHolds();
    ASSERT_TRUE(openByClick());
    ASSERT_TRUE(screenRests());
    const QRect before = panel();
    setScale(2);
    ASSERT_TRUE(screenRests());
    EXPECT_EQ(panel(), before);
    closeByClick();
    expectNothingLeft();
    application.terminate();
    ASSERT_TRUE(application.waitForFinished());
    ASSERT_TRUE(waitFor([] { return iconOnBar().isNull(); }));

    startApplication();
    click(restingIcon().center());
    EXPECT_TRUE(waitFor([&] {
        const std::vector<OpenWindow> open = windows();
        return open.size() == 1 && open.front().geometry.width() == 2 * before.width() &&
               workArea().contains(open.front().geometry);
    }));
    setScale(1);
}

TEST_F(ChaosTest, AToolThatIsKilledLeavesTheActionReadyAgain)
{
    showScenario("calm");
    rememberWhatItHolds();
    ASSERT_TRUE(QFile::remove(tools.filePath(QStringLiteral("quenchly"))));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/bin/yes"), tools.filePath(QStringLiteral("quenchly"))));
    openPanel();
    for (int round = 0; round < rounds(); ++round) {
        clickButton(QStringLiteral("Protection On"));
        std::vector<qint64> runs;
        ASSERT_TRUE(waitFor([&] { return (runs = childrenOf(application.processId())).size() == 1; }));
        EXPECT_TRUE(waitFor([this] { return buttonNamed(QStringLiteral("Protection On")).isEmpty(); }));
        ::kill(static_cast<pid_t>(runs.front()), SIGKILL);
        EXPECT_TRUE(waitFor([this] { return childrenOf(application.processId()).empty(); }));
        EXPECT_TRUE(waitFor([this] { return !buttonNamed(QStringLiteral("Protection On")).isEmpty(); }));
    }
    closeByClick();
    expectTheItemWorks();
    expectNothingLeft();
}

}  // namespace
}  // namespace quenchly
