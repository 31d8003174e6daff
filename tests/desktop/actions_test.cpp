#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTcpSocket>

#include "application_on_desktop.h"
#include "checker_contract.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

bool somethingServesTheDashboardsPort()
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), CheckerContract::dashboardPort);
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
    EXPECT_TRUE(QFileInfo::exists(launchAgentFile()));
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
    EXPECT_TRUE(waitFor([this] { return buttonNamed(QStringLiteral("Unload listed AI")).isEmpty(); }));
    EXPECT_TRUE(shows(QStringLiteral("Unload listed AI"))) << "it moves no row of an open panel";
    press("Escape");
    ASSERT_TRUE(waitFor([this] { return hasWindows(0); }));
    openPanel();
    EXPECT_FALSE(shows(QStringLiteral("Unload listed AI")));
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

TEST_F(ActionsTest, WhetherItOpensAtLoginIsReadAgainEachTimeThePanelOpens)
{
    const auto replaceEntryBy = [this](const QByteArray& text) {
        QFile entry(autostartFile());
        ASSERT_TRUE(entry.open(QIODevice::WriteOnly | QIODevice::Truncate));
        entry.write(text);
    };
    const auto shownNext = [this](const char* position) {
        openPanel();
        EXPECT_TRUE(waitForButton(QLatin1String(position))) << position;
        click(restingIcon().center());
        ASSERT_TRUE(waitFor([this] { return hasWindows(0); }));
        moveTo(idlePosition());
    };
    showScenario("calm");
    shownNext("Open at Login: On");
    QFile file(autostartFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray entry = file.readAll();
    for (const char* line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        replaceEntryBy("[Desktop Entry]\nType=Application\nName=Quenchly\nExec=quenchly-menubar\n" + QByteArray(line));
        shownNext("Open at Login: Off");
        replaceEntryBy(entry);
        shownNext("Open at Login: On");
    }
    ASSERT_TRUE(file.remove());
    shownNext("Open at Login: Off");
    EXPECT_FALSE(opensAtLogin());
}

TEST_F(ActionsTest, LiveDataOpensTheDashboard)
{
    const bool servedByOthers = somethingServesTheDashboardsPort();
    openIn("calm");
    clickButton(QStringLiteral("Live data"));
    const QString address = QStringLiteral("http://127.0.0.1:%1").arg(CheckerContract::dashboardPort);
    EXPECT_TRUE(waitFor([&] { return openedAddresses() == QStringList{address}; }));
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
    moveTo(idlePosition());
    EXPECT_TRUE(waitFor([this] { return !shows(QStringLiteral("Acknowledge")); }));
    EXPECT_FALSE(shows(QStringLiteral("SET ASIDE (2)")));
    EXPECT_FALSE(shows(QStringLiteral("Only Ollama, MLX, LM Studio.")));
    EXPECT_FALSE(panel().isEmpty());
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
