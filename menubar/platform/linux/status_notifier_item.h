#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <optional>

#include "menu_bar_extra.h"

class QDBusPendingCallWatcher;

namespace quenchly {

class StatusNotifierItemAdaptor;

/// The item as the trays of Linux desktops take it: an object on the session bus, announced to the watcher that knows
/// the trays. It announces itself to every watcher that appears, and so outlives a restart of the panel. No call waits
/// for an answer of a watcher.
class StatusNotifierItem : public QObject {
    Q_OBJECT

public:
    explicit StatusNotifierItem(const QDBusConnection& bus, QObject* parent = nullptr);
    ~StatusNotifierItem() override;

    /// Only what differs from the last call goes out on the bus.
    void setContent(const MenuBarExtraContent& content);

    /// Whether a tray is there to show the item; none until the bus has told.
    std::optional<bool> hasHost() const { return hasHost_; }
    QString serviceName() const { return serviceName_; }

Q_SIGNALS:
    void activated(QPoint position, const QString& activationToken);
    void hostChanged(bool hasHost);

private Q_SLOTS:
    void askForHost();

private:
    void watcherChanged(const QString& newOwner);
    void announce();
    void hostAnswered(QDBusPendingCallWatcher* answer);
    void setHasHost(bool hasHost);

    QDBusConnection bus_;
    QString serviceName_;
    StatusNotifierItemAdaptor* adaptor_;
    QPointer<QDBusPendingCallWatcher> hostQuestion_;
    std::optional<bool> hasHost_;
};

}  // namespace quenchly
