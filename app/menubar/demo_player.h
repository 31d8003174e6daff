#pragma once

#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <filesystem>

#include "system.h"

namespace quenchly {

/// Plays the stand-in checker's scenarios into a home folder. As soon as anybody has changed the state with the
/// stand-in, from the panel or a terminal, it plays no more and only checks on, so that nobody's choice is undone.
class DemoPlayer {
public:
    /// How long each scenario stays, how often a single one is played again, and how often it checks on, the latter two
    /// well below the age at which a state is stale.
    struct Pace {
        std::chrono::milliseconds tour{10'000};
        std::chrono::milliseconds singleScene{30'000};
        std::chrono::milliseconds checks{60'000};
    };

    /// Plays `scenario` again and again, as a checker would; all scenarios in turn when it is empty.
    DemoPlayer(const System& system, const QString& scenario) : DemoPlayer(system, scenario, Pace()) {}
    DemoPlayer(const System& system, const QString& scenario, const Pace& pace);
    ~DemoPlayer();
    DemoPlayer(const DemoPlayer&) = delete;
    DemoPlayer& operator=(const DemoPlayer&) = delete;

    /// The stand-in tool shipped with a program in this folder.
    static std::filesystem::path tool(const std::filesystem::path& executableFolder);

    /// Makes `system` find the stand-in tool, and its folders, figures and processes instead of the machine's.
    static void adapt(System& system);

    /// Writes the first situation and waits for it. Empty on success, else what went wrong in one line.
    QString begin();

private:
    void listScenarios();
    void goOn();
    void follow();
    void run(const QStringList& arguments);

    Pace pace_;
    QProcess process_;
    QStringList scenarios_;
    qsizetype next_ = 0;
    bool touring_ = true;
    QString tool_;
    QTimer timer_;
};

}  // namespace quenchly
