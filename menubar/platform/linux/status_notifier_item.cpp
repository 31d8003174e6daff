#include "status_notifier_item.h"

#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QtEndian>
#include <algorithm>
#include <utility>

namespace quenchly {

struct StatusNotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray argb;

    bool operator==(const StatusNotifierPixmap&) const = default;
};
using StatusNotifierPixmaps = QList<StatusNotifierPixmap>;

struct StatusNotifierToolTip {
    QString title;
    QString markup;

    bool operator==(const StatusNotifierToolTip&) const = default;
};

struct MenuItem {
    int id = 0;
    QVariantMap properties;
};

struct MenuLayout {
    MenuItem item;
    QVariantList children;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.argb;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.argb;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip)
{
    argument.beginStructure();
    argument << QString() << StatusNotifierPixmaps() << toolTip.title << toolTip.markup;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip)
{
    QString iconName;
    StatusNotifierPixmaps pixmaps;
    argument.beginStructure();
    argument >> iconName >> pixmaps >> toolTip.title >> toolTip.markup;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItem& item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItem& item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout)
{
    argument.beginStructure();
    argument << layout.item.id << layout.item.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout)
{
    argument.beginStructure();
    argument >> layout.item.id >> layout.item.properties >> layout.children;
    argument.endStructure();
    return argument;
}

namespace {

const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuPath = QStringLiteral("/StatusNotifierItem/Menu");
const QString noMenuPath = QStringLiteral("/NO_DBUSMENU");
const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// How long a watcher may take to tell whether it has a tray.
constexpr int hostAnswerMilliseconds = 1000;

QString nextServiceName()
{
    static int count = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2").arg(QCoreApplication::applicationPid()).arg(++count);
}

StatusNotifierPixmap pixmapOf(const QImage& image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    StatusNotifierPixmap pixmap{argb.width(), argb.height(), QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / 4, pixmap.argb.data());
    return pixmap;
}

StatusNotifierPixmaps pixmapsOf(const std::vector<QImage>& images)
{
    StatusNotifierPixmaps pixmaps;
    for (const QImage& image : images)
        pixmaps.append(pixmapOf(image));
    return pixmaps;
}

// Xfce escapes a tooltip's title, Waybar takes it as markup: only characters that are no markup read the same in both.
QString withoutMarkup(QString text)
{
    return text.replace(u'&', u'\uFF06').replace(u'<', u'\u2039').replace(u'>', u'\u203A');
}

/// The label with every number at its widest: load may pass 10 and, as a percentage, 100.
QString widestCase(const QString& label)
{
    QString widest;
    for (qsizetype start = 0, end = 0; start < label.size(); start = end) {
        while (end < label.size() && label[end].isDigit())
            ++end;
        if (end == start) {
            widest += label[end++];
            continue;
        }
        const bool isFraction = start > 0 && (label[start - 1] == u'.' || label[start - 1] == u',');
        const bool isPercentage = end < label.size() && label[end] == u'%';
        const qsizetype usualDigits = isFraction ? 1 : isPercentage ? 3 : 2;
        widest += QString(std::max(end - start, usualDigits), u'8');
    }
    return widest;
}

// GNOME's AppIndicator extension hides an item that says it has no menu; an empty one is shown and opens nothing.
bool trayNeedsMenu()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(QStringLiteral("GNOME"));
}

QDBusMessage watcherCall(const QString& interface, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(watcherService, watcherPath, interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

bool saysNoWatcher(const QDBusError& error)
{
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected ||
           error.name() == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
}

void registerMetaTypes()
{
    qDBusRegisterMetaType<StatusNotifierPixmap>();
    qDBusRegisterMetaType<StatusNotifierPixmaps>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
    qDBusRegisterMetaType<MenuItem>();
    qDBusRegisterMetaType<QList<MenuItem>>();
    qDBusRegisterMetaType<MenuLayout>();
}

}  // namespace

class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ label)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(quenchly::StatusNotifierPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(quenchly::StatusNotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem* item) : QDBusAbstractAdaptor(item), item_(item) {}

    QString category() const { return QStringLiteral("SystemServices"); }
    QString id() const { return QStringLiteral("quenchly-menubar"); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return {}; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return QDBusObjectPath(trayNeedsMenu() ? menuPath : noMenuPath); }

    QString label() const { return content_.label; }
    QString labelGuide() const { return widestCase(content_.label); }
    StatusNotifierPixmaps iconPixmap() const { return pixmaps_; }
    StatusNotifierToolTip toolTip() const
    {
        return {withoutMarkup(content_.label), content_.explanation.toHtmlEscaped()};
    }

    /// Returns the properties that changed.
    QVariantMap setContent(const MenuBarExtraContent& content);

public Q_SLOTS:
    void Activate(int x, int y) { activate(x, y); }
    void SecondaryActivate(int x, int y) { activate(x, y); }
    void ContextMenu(int x, int y) { activate(x, y); }
    void Scroll(int, const QString&) {}
    void ProvideXdgActivationToken(const QString& token) { activationToken_ = token; }

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewToolTip();
    void NewStatus(const QString& status);
    void XAyatanaNewLabel(const QString& label, const QString& guide);

private:
    void activate(int x, int y) { Q_EMIT item_->activated(QPoint(x, y), std::exchange(activationToken_, {})); }
    void setImages(const std::vector<QImage>& images, QVariantMap& changed);
    void setTexts(const MenuBarExtraContent& content, QVariantMap& changed);

    StatusNotifierItem* item_;
    MenuBarExtraContent content_;
    StatusNotifierPixmaps pixmaps_;
    QString activationToken_;
};

QVariantMap StatusNotifierItemAdaptor::setContent(const MenuBarExtraContent& content)
{
    QVariantMap changed;
    if (content.images != content_.images)
        setImages(content.images, changed);
    if (content.label != content_.label || content.explanation != content_.explanation)
        setTexts(content, changed);
    return changed;
}

void StatusNotifierItemAdaptor::setImages(const std::vector<QImage>& images, QVariantMap& changed)
{
    content_.images = images;
    pixmaps_ = pixmapsOf(images);
    changed.insert(QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps_));
    Q_EMIT NewIcon();
}

void StatusNotifierItemAdaptor::setTexts(const MenuBarExtraContent& content, QVariantMap& changed)
{
    const bool newLabel = content.label != content_.label;
    content_.label = content.label;
    content_.explanation = content.explanation;
    if (newLabel) {
        changed.insert(QStringLiteral("Title"), label());
        changed.insert(QStringLiteral("XAyatanaLabel"), label());
        changed.insert(QStringLiteral("XAyatanaLabelGuide"), labelGuide());
        Q_EMIT NewTitle();
        Q_EMIT XAyatanaNewLabel(label(), labelGuide());
    }
    changed.insert(QStringLiteral("ToolTip"), QVariant::fromValue(toolTip()));
    Q_EMIT NewToolTip();
}

/// The menu without entries; see `trayNeedsMenu`.
class EmptyMenuAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)

public:
    explicit EmptyMenuAdaptor(QObject* menu) : QDBusAbstractAdaptor(menu) {}

    uint version() const { return 3; }
    QString status() const { return QStringLiteral("normal"); }
    QString textDirection() const { return QStringLiteral("ltr"); }

public Q_SLOTS:
    uint GetLayout(int, int, const QStringList&, quenchly::MenuLayout& layout)
    {
        layout = {};
        return 1;
    }
    QList<quenchly::MenuItem> GetGroupProperties(const QList<int>&, const QStringList&) { return {}; }
    bool AboutToShow(int) { return false; }
    void Event(int, const QString&, const QDBusVariant&, uint) {}
};

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus), serviceName_(nextServiceName()), adaptor_(new StatusNotifierItemAdaptor(this))
{
    registerMetaTypes();
    auto* menu = new QObject(this);
    new EmptyMenuAdaptor(menu);
    bus_.registerObject(itemPath, this);
    bus_.registerObject(menuPath, menu);
    if (!bus_.registerService(serviceName_))
        serviceName_ = bus_.baseService();

    auto* watchers = new QDBusServiceWatcher(watcherService, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watchers, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { watcherChanged(newOwner); });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(watcherService, watcherPath, watcherService, QLatin1String(signal), this, SLOT(askForHost()));
    announce();
}

StatusNotifierItem::~StatusNotifierItem()
{
    bus_.unregisterObject(itemPath);
    bus_.unregisterObject(menuPath);
    bus_.unregisterService(serviceName_);
}

void StatusNotifierItem::setContent(const MenuBarExtraContent& content)
{
    const QVariantMap changed = adaptor_->setContent(content);
    if (changed.isEmpty())
        return;
    QDBusMessage signal =
        QDBusMessage::createSignal(itemPath, propertiesInterface, QStringLiteral("PropertiesChanged"));
    signal << itemInterface << changed << QStringList();
    bus_.send(signal);
}

void StatusNotifierItem::watcherChanged(const QString& newOwner)
{
    if (!newOwner.isEmpty()) {
        announce();
        return;
    }
    hostQuestion_.clear();
    setHasHost(false);
}

void StatusNotifierItem::announce()
{
    bus_.asyncCall(watcherCall(watcherService, QStringLiteral("RegisterStatusNotifierItem"), {serviceName_}));
    askForHost();
}

void StatusNotifierItem::askForHost()
{
    const QDBusMessage question = watcherCall(propertiesInterface, QStringLiteral("Get"),
                                              {watcherService, QStringLiteral("IsStatusNotifierHostRegistered")});
    hostQuestion_ = new QDBusPendingCallWatcher(bus_.asyncCall(question, hostAnswerMilliseconds), this);
    connect(hostQuestion_, &QDBusPendingCallWatcher::finished, this, &StatusNotifierItem::hostAnswered);
}

void StatusNotifierItem::hostAnswered(QDBusPendingCallWatcher* answer)
{
    answer->deleteLater();
    if (answer != hostQuestion_)
        return;
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    // A watcher without the property, or too busy to answer, may still have a tray.
    setHasHost(reply.isError() ? !saysNoWatcher(reply.error()) : reply.value().variant().toBool());
}

void StatusNotifierItem::setHasHost(bool hasHost)
{
    if (hasHost_ == hasHost)
        return;
    hasHost_ = hasHost;
    Q_EMIT hostChanged(hasHost);
}

}  // namespace quenchly

#include "status_notifier_item.moc"
