#pragma once

#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <filesystem>

#include "system.h"

namespace quenchly {

/// Plays the stand-in checker's scenarios into a home folder.
class DemoPlayer {
public:
    /// Plays `scenario` again and again, as a checker would; all scenarios in turn when it is empty.
    DemoPlayer(const System& system, const QString& scenario);

    /// The stand-in tool shipped beside this program.
    static std::filesystem::path tool(const System& system);

    /// Makes `system` find the stand-in tool, and its folders and figures instead of the machine's.
    static void adapt(System& system);

    /// Writes the first situation and waits for it. Empty on success, else what went wrong in one line.
    QString begin();

private:
    void playNext();
    void run(const QStringList& arguments);

    QProcess process_;
    QStringList scenarios_;
    qsizetype next_ = 0;
    QString tool_;
    QTimer timer_;
};

}  // namespace quenchly
