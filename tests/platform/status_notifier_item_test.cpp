#include "status_notifier_item.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cstdlib>
#include <optional>

#include "menu_bar_extra.h"
#include "patience.h"

namespace quenchly {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// Waits for something that happens in this process's event loop; false when it never does.
template <class Condition>
bool comes(const Condition& condition)
{
    return QTest::qWaitFor(condition, testing::patience);
}

QDBusConnection newConnection()
{
    static int count = 0;
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("test-%1").arg(++count));
}

QImage glyph(int size, QRgb color)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor::fromRgba(color));
    return image;
}

MenuBarExtraContent content(const QString& label = QStringLiteral("Extra on 9.4 / 8 · 2.1G"))
{
    const QRgb color = 0xFFE19A3C;
    return {{glyph(22, color), glyph(33, color), glyph(44, color), glyph(66, color)},
            label,
            QStringLiteral("Everything is calm")};
}

/// The part of a panel that items talk to, on a connection of its own.
class ScriptedWatcher : public QDBusVirtualObject {
public:
    ScriptedWatcher() { bus_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this); }
    ~ScriptedWatcher() override { disappear(); }

    void appear() { ASSERT_TRUE(bus_.registerService(watcherName)); }
    void disappear() { bus_.unregisterService(watcherName); }

    void setHasHost(bool value)
    {
        hasHost = value;
        bus_.send(QDBusMessage::createSignal(
            QStringLiteral("/StatusNotifierWatcher"), watcherName,
            value ? QStringLiteral("StatusNotifierHostRegistered") : QStringLiteral("StatusNotifierHostUnregistered")));
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() == QStringLiteral("RegisterStatusNotifierItem"))
            registrations.append(message.arguments().constFirst().toString());
        if (!answers)
            return true;
        const bool isQuestion = message.member() == QStringLiteral("Get");
        bus.send(isQuestion ? message.createReply(QVariant::fromValue(QDBusVariant(hasHost))) : message.createReply());
        return true;
    }

    bool answers = true;
    bool hasHost = true;
    QStringList registrations;

private:
    QDBusConnection bus_ = newConnection();
};

/// What a tray does with an item, on a connection of its own. Calls run the event loop, which the item shares.
class Host : public QObject {
    Q_OBJECT

public:
    explicit Host(QString service) : service_(std::move(service))
    {
        for (const char* signal : {"NewTitle", "NewIcon", "NewToolTip", "NewStatus", "XAyatanaNewLabel"})
            bus_.connect(service_, itemPath, itemInterface, QLatin1String(signal), this, SLOT(record(QDBusMessage)));
        bus_.connect(service_, itemPath, properties, QStringLiteral("PropertiesChanged"), this,
                     SLOT(record(QDBusMessage)));
    }

    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service_, path, interface, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher answer(bus_.asyncCall(message));
        EXPECT_TRUE(comes([&] { return answer.isFinished(); }));
        return answer.reply();
    }
    void callItem(const QString& method, const QVariantList& arguments)
    {
        EXPECT_EQ(call(itemPath, itemInterface, method, arguments).type(), QDBusMessage::ReplyMessage);
    }
    QVariant property(const char* name)
    {
        const QDBusMessage reply =
            call(itemPath, properties, QStringLiteral("Get"), {itemInterface, QLatin1String(name)});
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    QStringList signalNames() const
    {
        QStringList names;
        for (const QDBusMessage& signal : received)
            names.append(signal.member());
        return names;
    }

    QList<QDBusMessage> received;

private Q_SLOTS:
    void record(const QDBusMessage& signal) { received.append(signal); }

private:
    QString service_;
    QDBusConnection bus_ = newConnection();
};

struct Pixmap {
    int width = 0;
    int height = 0;
    QByteArray argb;
};

QList<Pixmap> pixmaps(const QDBusArgument& argument)
{
    QList<Pixmap> result;
    argument.beginArray();
    while (!argument.atEnd()) {
        Pixmap pixmap;
        argument.beginStructure();
        argument >> pixmap.width >> pixmap.height >> pixmap.argb;
        argument.endStructure();
        result.append(pixmap);
    }
    argument.endArray();
    return result;
}

struct ToolTip {
    QString iconName;
    QList<Pixmap> icon;
    QString title;
    QString text;
};

ToolTip toolTip(const QDBusArgument& argument)
{
    ToolTip result;
    argument.beginStructure();
    argument >> result.iconName;
    result.icon = pixmaps(argument);
    argument >> result.title >> result.text;
    argument.endStructure();
    return result;
}

class StatusNotifierItemTest : public ::testing::Test {
protected:
    void showItem()
    {
        watcher.appear();
        item.emplace(newConnection());
        item->setContent(content());
        ASSERT_TRUE(comes([&] { return item->hasHost().has_value(); }));
    }

    ScriptedWatcher watcher;
    std::optional<StatusNotifierItem> item;
};

TEST_F(StatusNotifierItemTest, RegistersOnceUnderItsOwnServiceName)
{
    showItem();
    EXPECT_EQ(watcher.registrations, QStringList{item->serviceName()});
    EXPECT_TRUE(item->serviceName().startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid())));
    EXPECT_EQ(item->hasHost(), true);
}

TEST_F(StatusNotifierItemTest, RegistersAgainWhenTheWatcherComesBack)
{
    showItem();
    watcher.disappear();
    ASSERT_TRUE(comes([&] { return item->hasHost() == false; }));
    watcher.appear();
    ASSERT_TRUE(comes([&] { return item->hasHost() == true; }));
    EXPECT_EQ(watcher.registrations, (QStringList{item->serviceName(), item->serviceName()}));
}

TEST_F(StatusNotifierItemTest, RegistersWithAWatcherThatStartsLater)
{
    item.emplace(newConnection());
    ASSERT_TRUE(comes([&] { return item->hasHost() == false; }));
    watcher.appear();
    ASSERT_TRUE(comes([&] { return item->hasHost() == true; }));
    EXPECT_EQ(watcher.registrations, QStringList{item->serviceName()});
}

TEST_F(StatusNotifierItemTest, AWatcherWithoutATrayIsNoHost)
{
    watcher.hasHost = false;
    showItem();
    EXPECT_EQ(item->hasHost(), false);
    watcher.setHasHost(true);
    ASSERT_TRUE(comes([&] { return item->hasHost() == true; }));
    watcher.setHasHost(false);
    ASSERT_TRUE(comes([&] { return item->hasHost() == false; }));
}

TEST_F(StatusNotifierItemTest, AWatcherThatNeverAnswersBlocksNothing)
{
    constexpr qint64 longerThanABusyMachineTakes = 20'000;  // milliseconds; a call that waits in vain takes 25 seconds
    watcher.answers = false;
    QElapsedTimer elapsed;
    elapsed.start();
    watcher.appear();
    item.emplace(newConnection());
    item->setContent(content());
    EXPECT_LT(elapsed.elapsed(), longerThanABusyMachineTakes);
    EXPECT_FALSE(item->hasHost().has_value()) << "nothing has answered yet";

    Host host(item->serviceName());
    EXPECT_EQ(host.property("Title").toString(), content().label);
    EXPECT_TRUE(comes([&] { return item->hasHost() == true; }));
}

TEST_F(StatusNotifierItemTest, TextsArePlain)
{
    showItem();
    MenuBarExtraContent hostile = content(QStringLiteral("A & B <b>9</b>"));
    hostile.explanation = QStringLiteral("<a href='x'>1 < 2 & 3</a>");
    item->setContent(hostile);

    Host host(item->serviceName());
    EXPECT_EQ(host.property("Title").toString(), hostile.label);
    EXPECT_EQ(host.property("XAyatanaLabel").toString(), hostile.label);
    const ToolTip tip = toolTip(host.property("ToolTip").value<QDBusArgument>());
    EXPECT_EQ(tip.title, QStringLiteral("A ＆ B ‹b›9‹/b›"));
    EXPECT_EQ(tip.text, QStringLiteral("&lt;a href='x'&gt;1 &lt; 2 &amp; 3&lt;/a&gt;"));
}

TEST_F(StatusNotifierItemTest, DescribesItself)
{
    showItem();
    Host host(item->serviceName());
    EXPECT_EQ(host.property("Category").toString(), QStringLiteral("SystemServices"));
    EXPECT_EQ(host.property("Id").toString(), QStringLiteral("quenchly-menubar"));
    EXPECT_EQ(host.property("Status").toString(), QStringLiteral("Active"));
    EXPECT_EQ(host.property("IconName").toString(), QString());
    EXPECT_EQ(host.property("WindowId"), QVariant(0));
    EXPECT_EQ(host.property("ItemIsMenu"), QVariant(false));
    EXPECT_EQ(host.property("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/NO_DBUSMENU"));
    const ToolTip tip = toolTip(host.property("ToolTip").value<QDBusArgument>());
    EXPECT_EQ(tip.title, content().label);
    EXPECT_EQ(tip.text, content().explanation);
    EXPECT_TRUE(tip.iconName.isEmpty() && tip.icon.isEmpty());
}

TEST_F(StatusNotifierItemTest, TheGuideIsAsWideAsTheLabelGets)
{
    showItem();
    Host host(item->serviceName());
    EXPECT_EQ(host.property("XAyatanaLabelGuide").toString(), QStringLiteral("Extra on 88.8 / 88 · 88.8G"));
    item->setContent(content(QStringLiteral("12.34 / 10 · 312M")));
    EXPECT_EQ(host.property("XAyatanaLabelGuide").toString(), QStringLiteral("88.88 / 88 · 888M"));
    item->setContent(content(QStringLiteral("On  57% · 8%")));
    EXPECT_EQ(host.property("XAyatanaLabelGuide").toString(), QStringLiteral("On  888% · 888%"));
}

TEST_F(StatusNotifierItemTest, PixelsAreInNetworkByteOrderAndNotPremultiplied)
{
    showItem();
    MenuBarExtraContent translucent = content();
    translucent.images[0].fill(QColor::fromRgba(0x80FF0000));
    item->setContent(translucent);

    Host host(item->serviceName());
    const QList<Pixmap> icon = pixmaps(host.property("IconPixmap").value<QDBusArgument>());
    QList<int> sizes;
    for (const Pixmap& pixmap : icon) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.argb.size(), 4 * pixmap.width * pixmap.height);
        sizes.append(pixmap.width);
    }
    ASSERT_EQ(sizes, (QList<int>{22, 33, 44, 66}));
    EXPECT_EQ(icon[0].argb.first(4).toHex(), QByteArray("80ff0000"));
    EXPECT_EQ(icon[3].argb.last(4).toHex(), QByteArray("ffe19a3c"));
}

TEST_F(StatusNotifierItemTest, OnlyWhatChangesIsSent)
{
    showItem();
    Host host(item->serviceName());
    item->setContent(content());
    MenuBarExtraContent next = content();
    next.explanation = QStringLiteral("Load is high");
    item->setContent(next);
    ASSERT_TRUE(comes([&] { return host.received.size() == 2; }));
    EXPECT_EQ(host.signalNames(), (QStringList{QStringLiteral("NewToolTip"), QStringLiteral("PropertiesChanged")}));

    host.received.clear();
    next.images[1].fill(Qt::red);
    item->setContent(next);
    ASSERT_TRUE(comes([&] { return host.received.size() == 2; }));
    EXPECT_EQ(host.signalNames(), (QStringList{QStringLiteral("NewIcon"), QStringLiteral("PropertiesChanged")}));
}

TEST_F(StatusNotifierItemTest, ANewLabelReachesEveryKindOfHost)
{
    showItem();
    Host host(item->serviceName());
    item->setContent(content(QStringLiteral("Extra on 1.0 / 8")));
    ASSERT_TRUE(comes([&] { return host.received.size() == 4; }));
    EXPECT_EQ(host.signalNames(), (QStringList{QStringLiteral("NewTitle"), QStringLiteral("XAyatanaNewLabel"),
                                               QStringLiteral("NewToolTip"), QStringLiteral("PropertiesChanged")}));
    EXPECT_EQ(host.received[1].arguments(),
              (QVariantList{QStringLiteral("Extra on 1.0 / 8"), QStringLiteral("Extra on 88.8 / 88")}));
    const QVariantList changes = host.received[3].arguments();
    ASSERT_EQ(changes.size(), 3);
    EXPECT_EQ(changes[0].toString(), itemInterface);
    EXPECT_EQ(qdbus_cast<QVariantMap>(changes[1]).keys(),
              (QStringList{QStringLiteral("Title"), QStringLiteral("ToolTip"), QStringLiteral("XAyatanaLabel"),
                           QStringLiteral("XAyatanaLabelGuide")}));
}

TEST_F(StatusNotifierItemTest, EveryKindOfPressActivates)
{
    showItem();
    QSignalSpy activated(&*item, &StatusNotifierItem::activated);
    Host host(item->serviceName());
    host.callItem(QStringLiteral("Activate"), {10, 20});
    host.callItem(QStringLiteral("SecondaryActivate"), {11, 21});
    host.callItem(QStringLiteral("ContextMenu"), {12, 22});
    host.callItem(QStringLiteral("Scroll"), {1, QStringLiteral("vertical")});
    ASSERT_EQ(activated.count(), 3);
    EXPECT_EQ(activated[0][0].toPoint(), QPoint(10, 20));
    EXPECT_EQ(activated[1][0].toPoint(), QPoint(11, 21));
    EXPECT_EQ(activated[2][0].toPoint(), QPoint(12, 22));
    EXPECT_EQ(activated[0][1].toString(), QString());
}

TEST_F(StatusNotifierItemTest, AnActivationTokenServesOnePress)
{
    showItem();
    QSignalSpy activated(&*item, &StatusNotifierItem::activated);
    Host host(item->serviceName());
    host.callItem(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token-1")});
    host.callItem(QStringLiteral("Activate"), {0, 0});
    host.callItem(QStringLiteral("Activate"), {0, 0});
    ASSERT_EQ(activated.count(), 2);
    EXPECT_EQ(activated[0][1].toString(), QStringLiteral("token-1"));
    EXPECT_EQ(activated[1][1].toString(), QString());
}

TEST_F(StatusNotifierItemTest, OffersAnEmptyMenuToGnome)
{
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    showItem();
    Host host(item->serviceName());
    const QString path = host.property("Menu").value<QDBusObjectPath>().path();
    qunsetenv("XDG_CURRENT_DESKTOP");

    const QDBusMessage layout = host.call(path, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("GetLayout"),
                                          {0, -1, QStringList{QStringLiteral("type")}});
    EXPECT_EQ(layout.signature(), QStringLiteral("u(ia{sv}av)"));
    const QDBusMessage groups =
        host.call(path, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("GetGroupProperties"),
                  {QVariant::fromValue(QList<int>{0}), QStringList()});
    EXPECT_EQ(groups.signature(), QStringLiteral("a(ia{sv})"));
}

TEST_F(StatusNotifierItemTest, LeavesTheBusWhenItGoes)
{
    showItem();
    Host host(item->serviceName());
    item.reset();
    const QDBusMessage reply =
        host.call(itemPath, properties, QStringLiteral("Get"), {itemInterface, QStringLiteral("Title")});
    EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage);
}

TEST(MenuBarExtraTest, SaysOnceThatThereIsNoTray)
{
    const auto extra = makeMenuBarExtra();
    QSignalSpy changes(extra.get(), &MenuBarExtra::availabilityChanged);
    EXPECT_FALSE(extra->isAvailable());
    ASSERT_TRUE(changes.wait(testing::patience));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0], QVariant(false));
}

TEST(MenuBarExtraTest, ARestartOfTheTrayIsNoChange)
{
    ScriptedWatcher watcher;
    watcher.appear();
    const auto extra = makeMenuBarExtra();
    QSignalSpy changes(extra.get(), &MenuBarExtra::availabilityChanged);
    ASSERT_TRUE(changes.wait(testing::patience));
    EXPECT_TRUE(extra->isAvailable());

    bool isUnnoticed = false;
    // A tray has a time to come back in, for which a machine can be too busy.
    for (int attempt = 0; attempt < 10 && !isUnnoticed; ++attempt) {
        changes.clear();
        watcher.registrations.clear();
        watcher.disappear();
        watcher.appear();
        ASSERT_TRUE(comes([&] { return !watcher.registrations.isEmpty() && extra->isAvailable(); }));
        isUnnoticed = changes.isEmpty();
    }
    EXPECT_TRUE(isUnnoticed);

    watcher.disappear();
    ASSERT_TRUE(changes.wait(testing::patience));
    EXPECT_FALSE(extra->isAvailable());
    watcher.appear();
    ASSERT_TRUE(changes.wait(testing::patience));
    EXPECT_TRUE(extra->isAvailable());
}

TEST(MenuBarExtraTest, PassesPressesOn)
{
    ScriptedWatcher watcher;
    watcher.appear();
    const auto extra = makeMenuBarExtra();
    QSignalSpy activated(extra.get(), &MenuBarExtra::activated);
    ASSERT_TRUE(comes([&] { return !watcher.registrations.isEmpty(); }));
    Host host(watcher.registrations.constFirst());
    host.callItem(QStringLiteral("Activate"), {3, 4});
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toPoint(), QPoint(3, 4));
}

int messageCount = 0;

[[noreturn]] void showWithoutABus()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++messageCount; });
    const auto extra = makeMenuBarExtra();
    extra->setContent(content());
    QSignalSpy changes(extra.get(), &MenuBarExtra::availabilityChanged);
    const bool decided = changes.wait(testing::patience) && !extra->isAvailable();
    extra->setContent(content(QStringLiteral("Later")));
    std::_Exit(decided && changes.count() == 1 && messageCount == 0 ? 0 : 1);
}

TEST(MenuBarExtraDeathTest, GetsByWithoutASessionBus)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    EXPECT_EXIT(showWithoutABus(), ::testing::ExitedWithCode(0), "");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
}

/// A session bus of our own, which can be ended.
class OwnBus {
public:
    OwnBus() { qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8()); }

    bool start()
    {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                       QStringLiteral("--print-address"), QStringLiteral("--address=") + address()});
        return daemon_.waitForReadyRead(testing::patience);
    }
    void kill()
    {
        daemon_.kill();
        daemon_.waitForFinished(testing::patience);
    }

private:
    QString address() const { return QStringLiteral("unix:path=") + folder_.filePath(QStringLiteral("bus")); }

    QTemporaryDir folder_;
    QProcess daemon_;
};

/// Whether a tray that appears now on the bus is told of the item, and a press in it arrives.
bool appearsAndCanBePressed(MenuBarExtra& extra)
{
    ScriptedWatcher watcher;
    watcher.appear();
    if (!comes([&] { return extra.isAvailable() && !watcher.registrations.isEmpty(); }))
        return false;
    QSignalSpy activated(&extra, &MenuBarExtra::activated);
    Host host(watcher.registrations.constFirst());
    const bool isSame = host.property("Title").toString() == content().label;
    host.callItem(QStringLiteral("Activate"), {3, 4});
    return isSame && activated.count() == 1;
}

/// Zero, or the step that failed.
int failedStep(OwnBus& bus)
{
    if (!bus.start())
        return 1;
    const auto extra = makeMenuBarExtra();
    extra->setContent(content());
    if (!appearsAndCanBePressed(*extra))
        return 2;
    for (int restart = 0; restart < 2; ++restart) {
        bus.kill();
        if (!comes([&] { return !extra->isAvailable(); }))
            return 3;
        if (!bus.start() || !appearsAndCanBePressed(*extra))
            return 4;
    }
    return 0;
}

[[noreturn]] void outliveSessionBuses()
{
    OwnBus bus;
    const int outcome = failedStep(bus);
    bus.kill();  // else it keeps the streams on which the test waits
    std::_Exit(outcome);
}

TEST(MenuBarExtraDeathTest, TheItemComesBackWithANewSessionBus)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EXIT(outliveSessionBuses(), ::testing::ExitedWithCode(0), "");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
}

}  // namespace
}  // namespace quenchly

#include "status_notifier_item_test.moc"
