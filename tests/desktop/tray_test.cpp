#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>

#include "application_on_desktop.h"
#include "bar.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");

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

class TrayTest : public ApplicationOnDesktop {
protected:
    void TearDown() override
    {
        ApplicationOnDesktop::TearDown();
        if (!barRuns())
            startBar();
    }

    static void TearDownTestSuite() { endBar(); }

    void showScenarioIn(const char* name, QRgb tint)
    {
        showScenario(name);
        ASSERT_TRUE(waitFor([tint] { return !colorOnBar(tint).isNull(); }));
    }
};

TEST_F(TrayTest, TheIconIsInTheTrayInTheTintOfTheState)
{
    showScenarioIn("holding", amber);
    ASSERT_EQ(registeredItems().size(), 1);
    EXPECT_TRUE(registeredItems().constFirst().startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(application.processId())));
    const QRect glyph = colorOnBar(amber);
    EXPECT_LE(glyph.width(), iconSize);
    EXPECT_LE(glyph.height(), iconSize);
    keepPicture(QStringLiteral("tray-holding"));
    keepEnlarged(QStringLiteral("icon-holding"), glyph);

    playScenario("calm");
    ASSERT_TRUE(waitFor([] { return !colorOnBar(blue).isNull(); }));
    EXPECT_TRUE(colorOnBar(amber).isNull());
    keepEnlarged(QStringLiteral("icon-calm"), colorOnBar(blue));
}

TEST_F(TrayTest, AnAlertOutlivesABarThatRestarts)
{
    showScenario("holding");
    openPanel();
    chooseRow(QStringLiteral("Uninstall…"));
    ASSERT_TRUE(waitFor([this] { return shownAlert().title == QStringLiteral("Uninstall Quenchly?"); }));
    const ShownAlert alert = shownAlert();
    killBar();
    startBar();
    ASSERT_TRUE(waitFor([] { return !iconOnBar().isNull(); }));
    expectAlert(alert);
    press("Escape");
    expectNoWindows();
    openPanel();
    EXPECT_TRUE(opensAtLogin());
}

TEST_F(TrayTest, TheToolTipCarriesTheLabel)
{
    showScenarioIn("holding", amber);
    const QString label = itemProperty("Title").toString();
    EXPECT_FALSE(label.isEmpty());
    EXPECT_EQ(itemProperty("XAyatanaLabel").toString(), label);
    EXPECT_EQ(itemToolTip().title, label);
    EXPECT_FALSE(itemToolTip().text.isEmpty());

    const QImage before = screen().copy(workArea());
    moveTo(colorOnBar(amber).center());
    EXPECT_TRUE(waitFor([&] { return screen().copy(workArea()) != before; }));
    keepPicture(QStringLiteral("tool-tip"));
}

TEST_F(TrayTest, TheIconComesBackWithTheBar)
{
    showScenarioIn("holding", amber);
    killBar();
    ASSERT_TRUE(waitFor([] { return colorOnBar(amber).isNull(); }));
    startBar();
    EXPECT_TRUE(waitFor([] { return registeredItems().size() == 1; }));
    EXPECT_TRUE(waitFor([] { return !colorOnBar(amber).isNull(); }));
    keepPicture(QStringLiteral("tray-after-restart"));
    EXPECT_TRUE(hasWindows(0));
}

TEST_F(TrayTest, AClickOpensThePanelAndEscapeClosesIt)
{
    showScenarioIn("calm", blue);
    EXPECT_TRUE(hasWindows(0));
    openPanel();
    keepPicture(QStringLiteral("panel"));
    press("Escape");
    EXPECT_TRUE(waitFor([this] { return hasWindows(0); }));
}

TEST_F(TrayTest, WithoutASessionBusTheX11TrayShowsIt)
{
    playScenario("calm");
    startApplication({{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/bus")}});
    ASSERT_TRUE(waitFor([] { return !colorOnBar(blue).isNull(); }));
    EXPECT_TRUE(registeredItems().isEmpty());
    EXPECT_TRUE(hasWindows(0));
    keepEnlarged(QStringLiteral("icon-x11-tray"), colorOnBar(blue));
    click(colorOnBar(blue).center());
    EXPECT_TRUE(waitFor([this] { return hasWindows(1); }));
}

TEST_F(TrayTest, WithoutAnyTrayTheWindowOpensByItself)
{
    killBar();
    playScenario("calm");
    startApplication();
    EXPECT_TRUE(waitFor([this] { return hasWindows(1); }));
    keepPicture(QStringLiteral("window-without-tray"));
    startBar();
    ASSERT_TRUE(waitFor([] { return !colorOnBar(blue).isNull(); }));
    EXPECT_EQ(registeredItems().size(), 1);
    EXPECT_LE(colorOnBar(blue).width(), iconSize);
}

}  // namespace
}  // namespace quenchly
