#include <gtest/gtest.h>
#include <signal.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <cstdlib>
#include <functional>

namespace quenchly {
namespace {

constexpr QRgb amber = 0xFFE19A3C;
constexpr QRgb blue = 0xFF4E93C6;
constexpr int panelHeight = 28;
constexpr int iconSize = 22;
constexpr int deadlineMilliseconds = 15000;

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString panelService = QStringLiteral("org.xfce.Panel");

bool waitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, deadlineMilliseconds);
}

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

void point(QPoint position)
{
    run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y())});
}

void click(QPoint position, int button = 1)
{
    point(position);
    run(QStringLiteral("xdotool"), {QStringLiteral("click"), QString::number(button)});
}

void press(const char* key)
{
    run(QStringLiteral("xdotool"), {QStringLiteral("key"), QLatin1String(key)});
}

QImage screen()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

QRect panelStrip(const QImage& image)
{
    return {0, 0, image.width(), panelHeight};
}

QString picturePath(const char* name)
{
    const QString folder = qEnvironmentVariable("QUENCHLY_SCREENSHOT_DIR", QDir::currentPath());
    QDir().mkpath(folder);
    return QStringLiteral("%1/%2.png").arg(folder, QLatin1String(name));
}

void keepPicture(const char* name)
{
    EXPECT_TRUE(screen().save(picturePath(name)));
}

/// The icon on the panel, many times enlarged.
void keepIcon(const char* name, const QRect& icon)
{
    const QRect around = icon.adjusted(-8, -8, 8, 8).intersected(panelStrip(screen()));
    EXPECT_TRUE(screen().copy(around).scaled(around.size() * 12).save(picturePath(name)));
}

bool isClose(QRgb a, QRgb b)
{
    constexpr int tolerance = 6;
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

/// Where on the panel pixels of a colour are; null when there are none.
QRect colorOnPanel(QRgb color)
{
    const QImage image = screen();
    QRect found;
    for (int y = 0; y < panelHeight; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isClose(image.pixel(x, y), color))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

QVariant propertyOf(const QString& service, const QString& path, const QString& interface, const char* name)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << interface << QLatin1String(name);
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question);
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

/// The service names of the items that the tray knows.
QStringList registeredItems()
{
    QStringList services;
    const QVariant items =
        propertyOf(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher, "RegisteredStatusNotifierItems");
    for (const QString& item : items.toStringList())
        services.append(item.section(u'/', 0, 0));
    return services;
}

QVariant itemProperty(const char* name)
{
    return propertyOf(registeredItems().value(0), QStringLiteral("/StatusNotifierItem"),
                      QStringLiteral("org.kde.StatusNotifierItem"), name);
}

struct ToolTip {
    QString title;
    QString text;
};

ToolTip itemToolTip()
{
    const auto argument = itemProperty("ToolTip").value<QDBusArgument>();
    ToolTip toolTip;
    QString iconName;
    argument.beginStructure();
    argument >> iconName;
    argument.beginArray();
    argument.endArray();
    argument >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return toolTip;
}

bool panelRuns()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(panelService);
}

bool trayRuns()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(watcher);
}

void killPanel()
{
    const uint panelId = QDBusConnection::sessionBus().interface()->servicePid(panelService);
    ::kill(static_cast<pid_t>(panelId), SIGKILL);
    ASSERT_TRUE(waitFor([] { return !panelRuns() && !trayRuns(); }));
}

/// The panel that took the place of the session's.
QProcess& secondPanel()
{
    static QProcess panel;
    return panel;
}

void startPanel()
{
    QProcess& panel = secondPanel();
    panel.setStandardOutputFile(QProcess::nullDevice());
    panel.setStandardErrorFile(QProcess::nullDevice());
    panel.waitForFinished();
    panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    ASSERT_TRUE(waitFor([] { return panelRuns() && trayRuns(); }));
}

class DesktopTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(waitFor([] { return trayRuns(); }));
        point({640, 600});
    }

    void TearDown() override
    {
        application.terminate();
        if (!application.waitForFinished(3000))
            application.kill();
        application.waitForFinished(3000);
        if (!panelRuns())
            startPanel();
        EXPECT_TRUE(waitFor([] { return colorOnPanel(amber).isNull() && colorOnPanel(blue).isNull(); }));
    }

    static void TearDownTestSuite()
    {
        secondPanel().kill();
        secondPanel().waitForFinished();
    }

    void playScenario(const char* name)
    {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QUENCHLY_HOME"),
                           home.filePath(QStringLiteral("Library/Application Support/Quenchly")));
        environment.insert(QStringLiteral("QUENCHLY_LAUNCH_AGENTS"),
                           home.filePath(QStringLiteral("Library/LaunchAgents")));
        tool.setProcessEnvironment(environment);
        tool.start(QStringLiteral(QUENCHLY_DEMO_TOOL_PATH), {QStringLiteral("scenario"), QLatin1String(name)});
        ASSERT_TRUE(tool.waitForFinished());
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
    }

    void startApplication(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
    {
        application.setProcessChannelMode(QProcess::ForwardedChannels);
        application.setProcessEnvironment(environment);
        application.start(QStringLiteral(QUENCHLY_MENUBAR_PATH),
                          {QStringLiteral("--home"), home.path(), QStringLiteral("--language"), QStringLiteral("en")});
        ASSERT_TRUE(application.waitForStarted());
    }

    void showScenario(const char* name, QRgb tint)
    {
        playScenario(name);
        startApplication();
        ASSERT_TRUE(waitFor([tint] { return !colorOnPanel(tint).isNull(); }));
    }

    /// The application's windows that a person sees, the icon in an X11 tray left out.
    int openWindows()
    {
        const QStringList found =
            run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                            QStringLiteral("--pid"), QString::number(application.processId())})
                .split(u'\n', Qt::SkipEmptyParts);
        int count = 0;
        for (const QString& window : found) {
            const QString geometry = run(QStringLiteral("xdotool"),
                                         {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
            if (geometry.section(QStringLiteral("WIDTH="), 1).section(u'\n', 0, 0).toInt() > 2 * iconSize)
                ++count;
        }
        return count;
    }

    QTemporaryDir home;
    QProcess application;
};

TEST_F(DesktopTest, TheIconIsInTheTrayInTheTintOfTheState)
{
    showScenario("holding", amber);
    ASSERT_EQ(registeredItems().size(), 1);
    EXPECT_TRUE(registeredItems().constFirst().startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(application.processId())));
    const QRect glyph = colorOnPanel(amber);
    EXPECT_LE(glyph.width(), iconSize);
    EXPECT_LE(glyph.height(), iconSize);
    keepPicture("tray-holding");
    keepIcon("icon-holding", glyph);

    playScenario("calm");
    ASSERT_TRUE(waitFor([] { return !colorOnPanel(blue).isNull(); }));
    EXPECT_TRUE(colorOnPanel(amber).isNull());
    keepIcon("icon-calm", colorOnPanel(blue));
}

TEST_F(DesktopTest, TheToolTipCarriesTheLabel)
{
    showScenario("holding", amber);
    const QString label = itemProperty("Title").toString();
    EXPECT_FALSE(label.isEmpty());
    EXPECT_EQ(itemProperty("XAyatanaLabel").toString(), label);
    EXPECT_EQ(itemToolTip().title, label);
    EXPECT_FALSE(itemToolTip().text.isEmpty());

    const QRect belowPanel(0, panelHeight + 1, screen().width(), 150);
    const QImage before = screen().copy(belowPanel);
    point(colorOnPanel(amber).center());
    EXPECT_TRUE(waitFor([&] { return screen().copy(belowPanel) != before; }));
    keepPicture("tool-tip");
}

TEST_F(DesktopTest, TheIconComesBackWithThePanel)
{
    showScenario("holding", amber);
    killPanel();
    ASSERT_TRUE(waitFor([] { return colorOnPanel(amber).isNull(); }));
    startPanel();
    EXPECT_TRUE(waitFor([] { return registeredItems().size() == 1; }));
    EXPECT_TRUE(waitFor([] { return !colorOnPanel(amber).isNull(); }));
    keepPicture("tray-after-restart");
    EXPECT_EQ(openWindows(), 0);
}

TEST_F(DesktopTest, AClickOpensAndClosesThePanel)
{
    showScenario("calm", blue);
    EXPECT_EQ(openWindows(), 0);
    const QPoint icon = colorOnPanel(blue).center();
    click(icon);
    ASSERT_TRUE(waitFor([this] { return openWindows() == 1; }));
    keepPicture("panel");
    click(icon);
    ASSERT_TRUE(waitFor([this] { return openWindows() == 0; }));
    // The press takes the focus, which closes the window too; its release must not open it again.
    EXPECT_FALSE(QTest::qWaitFor([this] { return openWindows() == 1; }, 700));
    click(icon);
    EXPECT_TRUE(waitFor([this] { return openWindows() == 1; }));
}

TEST_F(DesktopTest, EscapeClosesThePanel)
{
    showScenario("calm", blue);
    click(colorOnPanel(blue).center());
    ASSERT_TRUE(waitFor([this] { return openWindows() == 1; }));
    // The window takes the keys only once the window manager has made it active.
    EXPECT_TRUE(waitFor([this] {
        press("Escape");
        return openWindows() == 0;
    }));
}

TEST_F(DesktopTest, WithoutASessionBusTheX11TrayShowsIt)
{
    playScenario("calm");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/bus"));
    startApplication(environment);
    ASSERT_TRUE(waitFor([] { return !colorOnPanel(blue).isNull(); }));
    EXPECT_TRUE(registeredItems().isEmpty());
    EXPECT_EQ(openWindows(), 0);
    keepIcon("icon-x11-tray", colorOnPanel(blue));
    click(colorOnPanel(blue).center());
    EXPECT_TRUE(waitFor([this] { return openWindows() == 1; }));
}

TEST_F(DesktopTest, WithoutAnyTrayTheWindowOpensByItself)
{
    killPanel();
    playScenario("calm");
    startApplication();
    EXPECT_TRUE(waitFor([this] { return openWindows() == 1; }));
    keepPicture("window-without-tray");
    startPanel();
    ASSERT_TRUE(waitFor([] { return !colorOnPanel(blue).isNull(); }));
    EXPECT_EQ(registeredItems().size(), 1);
    EXPECT_LE(colorOnPanel(blue).width(), iconSize);
}

}  // namespace
}  // namespace quenchly

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
