#include "accessibility_tree.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

namespace quenchly::testing {
namespace {

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString getChildren = accessible + QStringLiteral(".GetChildren");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");

QDBusMessage question(const QString& service, const QString& path, const QString& method, const QVariantList& arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, method.section(u'.', 0, -2), method.section(u'.', -1));
    message.setArguments(arguments);
    return message;
}

const QDBusConnection& accessibilityBus()
{
    static const QDBusConnection bus = [] {
        const QDBusMessage asked = question(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                            QStringLiteral("org.a11y.Bus.GetAddress"), {});
        const QString address = QDBusConnection::sessionBus().call(asked).arguments().value(0).toString();
        return QDBusConnection::connectToBus(address, QStringLiteral("accessibility"));
    }();
    return bus;
}

/// An answer that is waited for only when it is read, so that many questions are under way at once.
class Answer {
public:
    Answer(const QString& service, const QString& path, const QString& method, const QVariantList& arguments = {})
        : call_(accessibilityBus().asyncCall(question(service, path, method, arguments)))
    {
    }

    /// Invalid when the object is gone.
    QVariant value()
    {
        call_.waitForFinished();
        const QVariant answer = call_.reply().arguments().value(0);
        return answer.canConvert<QDBusVariant>() ? answer.value<QDBusVariant>().variant() : answer;
    }

private:
    QDBusPendingCall call_;
};

Answer property(const QString& service, const QString& path, const QString& name)
{
    return {service,
            path,
            QStringLiteral("org.freedesktop.DBus.Properties.Get"),
            {name.section(u'.', 0, -2), name.section(u'.', -1)}};
}

struct ObjectReference {
    QString service;
    QString path;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, ObjectReference& reference)
{
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> reference.service >> path;
    argument.endStructure();
    reference.path = path.path();
    return argument;
}

template <typename T>
std::vector<T> listOf(const QVariant& answer)
{
    std::vector<T> list;
    if (!answer.canConvert<QDBusArgument>())
        return list;
    const auto argument = answer.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd())
        argument >> list.emplace_back();
    argument.endArray();
    return list;
}

/// The name by which a program is on the accessibility bus; empty when it is not there.
QString serviceOf(qint64 processId)
{
    Answer programs(QStringLiteral("org.a11y.atspi.Registry"), rootPath, getChildren);
    for (const ObjectReference& program : listOf<ObjectReference>(programs.value()))
        if (accessibilityBus().interface()->servicePid(program.service).value() == processId)
            return program.service;
    return {};
}

/// Everything that is told about one object.
class ObjectReading {
public:
    ObjectReading(const QString& service, const QString& path)
        : service_(service),
          path_(path),
          role_(service, path, accessible + QStringLiteral(".GetRole")),
          name_(property(service, path, accessible + QStringLiteral(".Name"))),
          description_(property(service, path, accessible + QStringLiteral(".Description"))),
          states_(service, path, accessible + QStringLiteral(".GetState")),
          children_(service, path, getChildren)
    {
    }

    /// Adds the object and what it holds, if it shows.
    void addTo(std::vector<Accessible>& found)
    {
        Accessible object{.path = path_, .role = static_cast<Accessible::Role>(role_.value().toUInt())};
        object.name = name_.value().toString();
        object.description = description_.value().toString();
        const std::vector<uint> states = listOf<uint>(states_.value());
        if (states.size() == 2)
            object.states = states[0] | static_cast<quint64>(states[1]) << 32U;
        if (!object.is(Accessible::State::showing))
            return;
        found.push_back(object);
        std::vector<ObjectReading> children;
        for (const ObjectReference& child : listOf<ObjectReference>(children_.value()))
            children.emplace_back(service_, child.path);
        for (ObjectReading& child : children)
            child.addTo(found);
    }

private:
    QString service_;
    QString path_;
    Answer role_;
    Answer name_;
    Answer description_;
    Answer states_;
    Answer children_;
};

}  // namespace

bool Accessible::isControl() const
{
    const bool meter = role == Role::progressBar || role == Role::scrollBar;
    return meter || role == Role::pushButton || (is(State::focusable) && role != Role::frame);
}

void AccessibilityTree::announceAssistance()
{
    QDBusConnection::sessionBus().call(question(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties.Set"),
        {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"), QVariant::fromValue(QDBusVariant(true))}));
}

AccessibilityTree::AccessibilityTree(qint64 processId) : service_(serviceOf(processId)) {}

std::vector<Accessible> AccessibilityTree::showing() const
{
    std::vector<Accessible> found;
    if (service_.isEmpty())
        return found;
    Answer windows(service_, rootPath, getChildren);
    for (const ObjectReference& window : listOf<ObjectReference>(windows.value()))
        ObjectReading(service_, window.path).addTo(found);
    return found;
}

QRect AccessibilityTree::place(const Accessible& object) const
{
    const uint onScreen = 0;
    const QVariant answer =
        Answer(service_, object.path, QStringLiteral("org.a11y.atspi.Component.GetExtents"), {onScreen}).value();
    if (!answer.canConvert<QDBusArgument>())
        return {};
    int x = 0, y = 0, width = 0, height = 0;
    const auto argument = answer.value<QDBusArgument>();
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

bool AccessibilityTree::press(const Accessible& object) const
{
    const auto ask = [&](const char* method, int action) {
        return Answer(service_, object.path, QStringLiteral("org.a11y.atspi.Action.") + QLatin1String(method), {action})
            .value();
    };
    const int mostActions = 10;
    for (int action = 0; action < mostActions; ++action)
        if (ask("GetName", action).toString() == QStringLiteral("Press"))
            return ask("DoAction", action).toBool();
    return false;
}

std::optional<double> AccessibilityTree::value(const Accessible& object) const
{
    const QVariant current =
        property(service_, object.path, QStringLiteral("org.a11y.atspi.Value.CurrentValue")).value();
    return current.isValid() ? std::optional(current.toDouble()) : std::nullopt;
}

double AccessibilityTree::largestValue(const Accessible& object) const
{
    return property(service_, object.path, QStringLiteral("org.a11y.atspi.Value.MaximumValue")).value().toDouble();
}

}  // namespace quenchly::testing
