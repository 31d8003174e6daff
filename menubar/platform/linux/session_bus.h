#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

namespace quenchly {

/// A connection to the session bus that is made anew when the bus has ended and another one runs at its address, as
/// after a crash or an update of the bus. Qt's own connection stays closed for good. Where there is no bus from the
/// start none is looked for.
class SessionBus : public QObject {
    Q_OBJECT

public:
    explicit SessionBus(QObject* parent = nullptr);
    ~SessionBus() override;

    /// Not connected between `lost` and `found`.
    const QDBusConnection& connection() const { return connection_; }

Q_SIGNALS:
    void lost();
    void found();

private Q_SLOTS:
    void leave();

private:
    void watchForEnd();
    void lookForAnother();
    void forget() const;

    QDBusConnection connection_;
    QTimer look_;
};

}  // namespace quenchly
