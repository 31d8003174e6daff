#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <map>
#include <vector>

#include "accessibility_tree.h"

namespace quenchly::testing {

/// A window of the application that a person sees.
struct OpenWindow {
    QString title;
    QRect geometry;  ///< in pixels of the screen
};

/// What an alert says, as an assistive technology reads it.
struct ShownAlert {
    QString title;
    QString text;
    QStringList buttons;      ///< in the order in which they are reached
    QString pressedByReturn;  ///< a button, which has the focus too

    bool operator==(const ShownAlert&) const = default;
};

void PrintTo(const ShownAlert& alert, std::ostream* out);

/// Every test has a home folder of its own, with the stand-in checker's tool and a browser that only takes notes.
class ApplicationOnDesktop : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Puts the home folder into a situation that the stand-in checker knows.
    void playScenario(const char* name);

    void startApplication(const std::map<QString, QString>& variables = {}, const char* language = "en");
    /// Starts it in a situation and waits for its icon.
    void showScenario(const char* name);

    /// The icon in an X11 tray is not counted.
    std::vector<OpenWindow> windows() const;
    bool hasWindows(std::size_t count) const { return windows().size() == count; }

    /// Presses the item and waits for the panel.
    void openPanel();
    /// Waits until the panel takes the keys.
    void waitUntilActive() const;
    /// Where the panel is, in pixels; empty while it is closed.
    QRect panel() const;
    /// Where the open help is, in pixels; empty while none is open.
    QRect popover() const;

    AccessibilityTree tree() const { return AccessibilityTree(application.processId()); }
    /// What shows with a name; several objects can have it.
    std::vector<Accessible> named(const QString& name) const;
    bool shows(const QString& name) const { return !named(name).empty(); }
    /// Where a button is on the screen, in pixels; empty when there is none. `place` counts those of one name.
    QRect buttonNamed(const QString& name, std::size_t place = 0) const;
    static QRect inPixels(const QRect& points);
    /// Clicks a button once it is there and stays where it is.
    void clickButton(const QString& name, std::size_t place = 0);
    /// What has the focus; empty when nothing has.
    Accessible focused() const;

    /// Presses a row of the open panel by the keyboard: a click could miss what the first scan of the targets moves.
    void chooseRow(const QString& name);
    /// The alert that takes all input; empty while there is none.
    ShownAlert shownAlert() const;
    /// Waits for this alert, whole on the screen and with the focus, and for the panel to be gone.
    void expectAlert(const ShownAlert& alert);
    /// Waits for the windows to go; the program goes on.
    void expectNoWindows();

    /// Whether a desktop would start the application at login.
    bool opensAtLogin() const;
    QString autostartFile() const { return home.filePath(QStringLiteral(".config/autostart/quenchly.desktop")); }
    QString launchAgentFile() const;

    /// Variables with which the application's lines for the system log end up in `logLines`.
    std::map<QString, QString> logCaught() const;
    QStringList logLines() const;

    /// The arguments of every run of the stand-in checker by the application, each as one text.
    QStringList toolRuns() const;
    QStringList openedAddresses() const;

    QTemporaryDir home;
    QTemporaryDir tools;
    /// What is started.
    QString program;
    QProcess application;
    /// Where what the application prints goes.
    QProcess::ProcessChannelMode channels = QProcess::ForwardedChannels;

private:
    QRect windowTitled(const QString& title) const;
    QStringList linesOf(const char* file) const;
};

}  // namespace quenchly::testing
