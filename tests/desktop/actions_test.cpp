#include <gtest/gtest.h>

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTcpSocket>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

bool somethingServesTheDashboardsPort()
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), 8280);
    return socket.waitForConnected();
}

class ActionsTest : public ApplicationOnDesktop {
protected:
    void openIn(const char* scenario)
    {
        showScenario(scenario);
        openPanel();
    }

    bool waitForRuns(const QStringList& runs) const
    {
        return waitFor([&] { return toolRuns() == runs; });
    }

    bool waitForButton(const QString& name) const
    {
        return waitFor([&] { return !buttonNamed(name).isEmpty(); });
    }

    bool opensAtLogin() const
    {
        return QFileInfo::exists(home.filePath(QStringLiteral(".config/autostart/quenchly.desktop")));
    }

    bool launchAgentIsThere() const
    {
        return QFileInfo::exists(home.filePath(QStringLiteral("Library/LaunchAgents/com.brindlemoor.quenchly.plist")));
    }

    /// The panel is gone and an alert is there instead, with this text in it.
    void expectAlert(const QString& text)
    {
        EXPECT_TRUE(waitFor([&] { return shows(text); })) << text.toStdString();
        EXPECT_TRUE(waitFor([this] { return panel().isEmpty() && hasWindows(1); }));
    }

    void expectRuns()
    {
        EXPECT_TRUE(waitFor([this] { return hasWindows(0); }));
        EXPECT_EQ(application.state(), QProcess::Running);
    }
};

TEST_F(ActionsTest, StartBackgroundChecks)
{
    openIn("not-set-up");
    EXPECT_TRUE(shows(QStringLiteral("Checks not set up")));
    EXPECT_FALSE(shows(QStringLiteral("Protection On")));
    clickButton(QStringLiteral("Start background checks"));
    EXPECT_TRUE(waitForRuns({QStringLiteral("install-agent")}));
    EXPECT_TRUE(waitForButton(QStringLiteral("Protection On")));
    EXPECT_FALSE(shows(QStringLiteral("Start background checks")));
    EXPECT_FALSE(shows(QStringLiteral("Checks not set up")));
    EXPECT_TRUE(launchAgentIsThere());
}

TEST_F(ActionsTest, ProtectionOffAndOn)
{
    openIn("calm");
    clickButton(QStringLiteral("Protection On"));
    EXPECT_TRUE(waitForRuns({QStringLiteral("disable")}));
    ASSERT_TRUE(waitForButton(QStringLiteral("Protection Off")));
    EXPECT_FALSE(shows(QStringLiteral("Protection On")));
    clickButton(QStringLiteral("Protection Off"));
    EXPECT_TRUE(waitForRuns({QStringLiteral("disable"), QStringLiteral("enable")}));
    EXPECT_TRUE(waitForButton(QStringLiteral("Protection On")));
    EXPECT_FALSE(shows(QStringLiteral("Protection Off")));
}

TEST_F(ActionsTest, UnloadListedAI)
{
    openIn("swap-critical");
    clickButton(QStringLiteral("Unload listed AI"));
    EXPECT_TRUE(waitForRuns({QStringLiteral("unload-listed")}));
    EXPECT_TRUE(waitFor([this] { return !shows(QStringLiteral("Unload listed AI")); }));
    EXPECT_FALSE(shows(QStringLiteral("Extra memory tip, Help")));
}

TEST_F(ActionsTest, OpenAtLoginOffAndOn)
{
    openIn("calm");
    EXPECT_TRUE(opensAtLogin());
    clickButton(QStringLiteral("Open at Login: On"));
    EXPECT_TRUE(waitForButton(QStringLiteral("Open at Login: Off")));
    EXPECT_FALSE(opensAtLogin());
    clickButton(QStringLiteral("Open at Login: Off"));
    EXPECT_TRUE(waitForButton(QStringLiteral("Open at Login: On")));
    EXPECT_TRUE(opensAtLogin());
    EXPECT_EQ(toolRuns(), QStringList());
}

TEST_F(ActionsTest, LiveDataOpensTheDashboard)
{
    const bool servedByOthers = somethingServesTheDashboardsPort();
    openIn("calm");
    clickButton(QStringLiteral("Live data"));
    EXPECT_TRUE(waitFor([this] { return openedAddresses() == QStringList{QStringLiteral("http://127.0.0.1:8280")}; }));
    EXPECT_EQ(toolRuns(), servedByOthers ? QStringList() : QStringList{QStringLiteral("serve")});
    EXPECT_FALSE(panel().isEmpty());
}

TEST_F(ActionsTest, AcknowledgeOneThenAll)
{
    openIn("set-aside");
    ASSERT_TRUE(shows(QStringLiteral("SET ASIDE (3)")));
    clickButton(QStringLiteral("Acknowledge"), 1);
    EXPECT_TRUE(waitForRuns({QStringLiteral("quarantine ack ollama-runner-53122")}));
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (2)")); }));
    clickButton(QStringLiteral("Clear all (2)"));
    EXPECT_TRUE(waitForRuns({QStringLiteral("quarantine ack ollama-runner-53122"),
                             QStringLiteral("quarantine ack mlx-server-8080"),
                             QStringLiteral("quarantine ack lmstudio-service")}));
    EXPECT_TRUE(waitFor([this] { return !shows(QStringLiteral("Acknowledge")); }));
    EXPECT_FALSE(shows(QStringLiteral("SET ASIDE (2)")));
    EXPECT_FALSE(shows(QStringLiteral("Only Ollama, MLX, LM Studio.")));
    EXPECT_FALSE(panel().isEmpty());
}

TEST_F(ActionsTest, CheckForUpdatesSaysThatThereAreNone)
{
    openIn("calm");
    clickButton(QStringLiteral("Check for Updates..."));
    expectAlert(QStringLiteral("Updates not configured yet"));
    keepPicture(QStringLiteral("alert-updates"));
    clickButton(QStringLiteral("OK"));
    expectRuns();
}

TEST_F(ActionsTest, ThePanelStaysClosedUntilAnAlertIsAnswered)
{
    openIn("calm");
    clickButton(QStringLiteral("Check for Updates..."));
    expectAlert(QStringLiteral("Updates not configured yet"));
    click(restingIcon().center());
    EXPECT_TRUE(screenRests());
    EXPECT_TRUE(panel().isEmpty());
    clickButton(QStringLiteral("OK"));
    expectRuns();
    openPanel();
}

TEST_F(ActionsTest, ReportAProblemCopiesADraft)
{
    openIn("calm");
    clickButton(QStringLiteral("Report a problem"));
    expectAlert(QStringLiteral("Support email copied"));
    keepPicture(QStringLiteral("alert-report"));
    EXPECT_TRUE(waitFor([] { return QGuiApplication::clipboard()->text().startsWith(QStringLiteral("To: ")); }));
    const QString draft = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(draft.contains(QStringLiteral("\nSubject: Quenchly 1."))) << draft.toStdString();
    EXPECT_TRUE(draft.endsWith(QStringLiteral("\nWhat went wrong:\n"))) << draft.toStdString();
    clickButton(QStringLiteral("Open support form"));
    EXPECT_TRUE(waitFor([this] { return openedAddresses().size() == 1; }));
    EXPECT_TRUE(openedAddresses().value(0).contains(QStringLiteral("/quenchly/support.html?v=1.")));
    expectRuns();
}

TEST_F(ActionsTest, UninstallThenCancelChangesNothing)
{
    openIn("calm");
    clickButton(QStringLiteral("Uninstall…"));
    expectAlert(QStringLiteral("Uninstall Quenchly?"));
    keepPicture(QStringLiteral("alert-uninstall"));
    clickButton(QStringLiteral("Cancel"));
    expectRuns();
    EXPECT_EQ(toolRuns(), QStringList());
    EXPECT_TRUE(opensAtLogin());
    EXPECT_TRUE(launchAgentIsThere());
    openPanel();
    EXPECT_TRUE(shows(QStringLiteral("Open at Login: On")));
}

TEST_F(ActionsTest, QuitEndsTheProgram)
{
    openIn("calm");
    clickButton(QStringLiteral("Quit Quenchly"));
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(application.exitCode(), 0);
    EXPECT_EQ(toolRuns(), QStringList());
}

}  // namespace
}  // namespace quenchly
