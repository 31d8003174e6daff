#pragma once

#include <sys/types.h>

#include <QEventLoop>
#include <QObject>
#include <QString>

namespace quenchly::bench {

/// A program that runs as long as this object lives.
class StartedProgram {
public:
    /// `arguments` as main gets them, the program's path first; this program ends when it cannot be started.
    explicit StartedProgram(char** arguments);
    ~StartedProgram();
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    pid_t id() const { return id_; }

private:
    pid_t id_ = 0;
};

/// Hears of the items that come into the session's tray.
class Tray : public QObject {
    Q_OBJECT

public:
    Tray();

    /// Waits for the next item; false when none comes within ten seconds.
    bool waitForItem();

private Q_SLOTS:
    void registered(const QString& item);

private:
    QEventLoop loop_;
    bool came_ = false;
};

}  // namespace quenchly::bench
