#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRasterWindow>
#include <initializer_list>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

const ShownAlert confirmation{
    .title = QStringLiteral("Uninstall Quenchly?"),
    .text = QStringLiteral("This turns off Open at Login and removes the background check (com.brindlemoor.quenchly). "
                           "Your saved data stays on this Mac; you can remove it in the next step."),
    .buttons = {QStringLiteral("Uninstall"), QStringLiteral("Cancel")},
    .pressedByReturn = QStringLiteral("Uninstall")};

const ShownAlert trash{.title = QStringLiteral("Move Quenchly to the Trash?"),
                       .text = QStringLiteral("Removes the menu-bar app from this Mac. You can reinstall from the "
                                              "Quenchly download later."),
                       .buttons = {QStringLiteral("Move to Trash"), QStringLiteral("Keep app")},
                       .pressedByReturn = QStringLiteral("Move to Trash")};

const ShownAlert goodbye{
    .title = QStringLiteral("Quenchly uninstalled"),
    .text = QStringLiteral("Open at Login is off and the background check is removed. The app is still here; Quit when "
                           "you are done, or Move to Trash from Finder."),
    .buttons = {QStringLiteral("OK")},
    .pressedByReturn = QStringLiteral("OK")};

using Keys = std::initializer_list<const char*>;
constexpr Keys firstButton = {"Return"};
constexpr Keys secondButton = {"Tab", "space"};
constexpr Keys escape = {"Escape"};
constexpr Keys closeWindow = {"alt+F4"};

/// The program that is uninstalled is a copy below the test's home folder, and the Trash lies there too.
class UninstallOnDesktopTest : public ApplicationOnDesktop {
protected:
    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        const QString original = program;
        program = home.filePath(QStringLiteral("Prög räms 100%/%20/quenchly-menubar"));
        ASSERT_TRUE(QDir().mkpath(QFileInfo(program).path()));
        ASSERT_TRUE(QFile::copy(original, program));
    }

    void openUninstall()
    {
        playScenario("calm");
        std::map<QString, QString> variables = logCaught();
        variables[QStringLiteral("XDG_DATA_HOME")] = dataFolder();
        startApplication(variables);
        openPanel();
        chooseRow(QStringLiteral("Uninstall…"));
        expectAlert(confirmation);
    }

    void answer(const ShownAlert& alert, Keys keys)
    {
        if (HasFailure())
            return;
        ASSERT_NO_FATAL_FAILURE(expectAlert(alert));
        keepPicture(alert.title.toLower().remove(u'?').replace(u' ', u'-'));
        for (const char* key : keys)
            press(key);
    }

    ShownAlert savedData() const
    {
        return {.title = QStringLiteral("Remove saved data too?"),
                .text = QStringLiteral("This step is optional. It archives your Quenchly data folder (its saved state) "
                                       "and then removes the live copy. Skip it to keep the data for a later "
                                       "install.\n\n") +
                        home.filePath(QStringLiteral("Library/Application Support/Quenchly")),
                .buttons = {QStringLiteral("Keep saved data"), QStringLiteral("Remove saved data")},
                .pressedByReturn = QStringLiteral("Keep saved data")};
    }

    void expectEnd()
    {
        ASSERT_TRUE(application.waitForFinished());
        EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(application.exitCode(), 0);
        const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
        EXPECT_EQ(runtime.entryList({QStringLiteral("quenchly-menubar*")}, QDir::AllEntries | QDir::System),
                  QStringList());
        EXPECT_TRUE(waitFor([] { return iconOnBar().isNull(); }));
    }

    void expectChecksAreRemoved() const
    {
        EXPECT_FALSE(opensAtLogin());
        EXPECT_FALSE(QFileInfo::exists(launchAgentFile()));
    }

    bool hasSavedData() const
    {
        return QFileInfo::exists(
            home.filePath(QStringLiteral("Library/Application Support/Quenchly/state/heat-state.json")));
    }

    bool programIsThere() const { return QFileInfo::exists(program); }

    QString dataFolder() const { return home.filePath(QStringLiteral(".local/share")); }

    QByteArray trashNote() const
    {
        QFile note(dataFolder() + QStringLiteral("/Trash/info/quenchly-menubar.trashinfo"));
        return note.open(QIODevice::ReadOnly) ? note.readAll() : QByteArray();
    }
};

TEST_F(UninstallOnDesktopTest, CancellingOrClosingTheFirstAlertChangesNothing)
{
    openUninstall();
    for (const Keys keys : {secondButton, escape, closeWindow}) {
        answer(confirmation, keys);
        expectNoWindows();
        EXPECT_TRUE(opensAtLogin());
        EXPECT_TRUE(QFileInfo::exists(launchAgentFile()));
        EXPECT_TRUE(hasSavedData());
        openPanel();
        chooseRow(QStringLiteral("Uninstall…"));
    }
    answer(confirmation, escape);
    expectNoWindows();
    EXPECT_EQ(toolRuns(), QStringList());
    openPanel();
    EXPECT_TRUE(shows(QStringLiteral("Open at Login: On")));
}

TEST_F(UninstallOnDesktopTest, EverythingIsRemovedStepByStepAndTheProgramCanBePutBack)
{
    openUninstall();
    answer(confirmation, firstButton);
    expectAlert(savedData());
    expectChecksAreRemoved();
    EXPECT_EQ(toolRuns(), QStringList{QStringLiteral("remove-agent")});
    EXPECT_TRUE(hasSavedData());
    answer(savedData(), secondButton);
    expectAlert(trash);
    EXPECT_EQ(toolRuns(), (QStringList{QStringLiteral("remove-agent"), QStringLiteral("uninstall --yes")}));
    EXPECT_FALSE(hasSavedData());
    EXPECT_TRUE(programIsThere());
    answer(trash, firstButton);
    expectEnd();
    EXPECT_FALSE(programIsThere());
    EXPECT_TRUE(QFileInfo(dataFolder() + QStringLiteral("/Trash/files/quenchly-menubar")).isExecutable());
    const QList<QByteArray> note = trashNote().split('\n');
    EXPECT_EQ(note.value(0), "[Trash Info]");
    EXPECT_EQ(note.value(1), "Path=" + program.toUtf8().toPercentEncoding("/"));
    EXPECT_TRUE(note.value(2).startsWith("DeletionDate=" + QDate::currentDate().toString(Qt::ISODate).toLatin1()));
    EXPECT_FALSE(logLines().join(u'\n').contains(QStringLiteral("failed")));
}

TEST_F(UninstallOnDesktopTest, DataAndProgramCanBeKept)
{
    openUninstall();
    answer(confirmation, firstButton);
    answer(savedData(), firstButton);
    answer(trash, secondButton);
    answer(goodbye, firstButton);
    expectEnd();
    expectChecksAreRemoved();
    EXPECT_EQ(toolRuns(), QStringList{QStringLiteral("remove-agent")});
    EXPECT_TRUE(hasSavedData());
    EXPECT_TRUE(programIsThere());
}

TEST_F(UninstallOnDesktopTest, ClosingTheLaterAlertsKeepsWhatTheyAskFor)
{
    openUninstall();
    answer(confirmation, firstButton);
    answer(savedData(), escape);
    answer(trash, closeWindow);
    answer(goodbye, escape);
    expectEnd();
    EXPECT_EQ(toolRuns(), QStringList{QStringLiteral("remove-agent")});
    EXPECT_TRUE(hasSavedData());
    EXPECT_TRUE(programIsThere());
}

TEST_F(UninstallOnDesktopTest, DataCanBeRemovedAndTheProgramKept)
{
    openUninstall();
    answer(confirmation, firstButton);
    answer(savedData(), secondButton);
    answer(trash, escape);
    answer(goodbye, closeWindow);
    expectEnd();
    EXPECT_EQ(toolRuns(), (QStringList{QStringLiteral("remove-agent"), QStringLiteral("uninstall --yes")}));
    EXPECT_FALSE(hasSavedData());
    EXPECT_TRUE(programIsThere());
}

TEST_F(UninstallOnDesktopTest, WithoutAToolTheChecksAreRemovedAndTheDataStays)
{
    ASSERT_TRUE(QFile::remove(tools.filePath(QStringLiteral("quenchly"))));
    openUninstall();
    answer(confirmation, firstButton);
    expectAlert(savedData());
    expectChecksAreRemoved();
    answer(savedData(), secondButton);
    answer(trash, firstButton);
    expectEnd();
    EXPECT_EQ(toolRuns(), QStringList());
    EXPECT_TRUE(hasSavedData());
    EXPECT_FALSE(programIsThere());
}

TEST_F(UninstallOnDesktopTest, AFailedMoveToTheTrashIsLoggedAndTheProgramEnds)
{
    ASSERT_TRUE(QDir().mkpath(dataFolder() + QStringLiteral("/Trash/files")));
    QFile inTheWay(dataFolder() + QStringLiteral("/Trash/info"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    openUninstall();
    answer(confirmation, firstButton);
    answer(savedData(), firstButton);
    answer(trash, firstButton);
    expectEnd();
    EXPECT_TRUE(programIsThere());
    EXPECT_EQ(logLines().value(logLines().size() - 1),
              QStringLiteral("Quenchly uninstall Trash failed: Not a directory"));
}

TEST_F(UninstallOnDesktopTest, BeingToldToEndIsNoAnswer)
{
    for (int answered = 0; answered < 3; ++answered) {
        openUninstall();
        if (answered > 0)
            answer(confirmation, firstButton);
        if (answered > 1)
            answer(savedData(), firstButton);
        expectAlert(answered == 0 ? confirmation : answered == 1 ? savedData() : trash);
        application.terminate();
        expectEnd();
        EXPECT_EQ(opensAtLogin(), answered == 0);
        EXPECT_EQ(toolRuns().size(), answered);
        EXPECT_TRUE(hasSavedData());
        EXPECT_TRUE(programIsThere());
    }
}

TEST_F(UninstallOnDesktopTest, StartingTheProgramAgainBringsTheAlertForward)
{
    openUninstall();
    QRasterWindow other;
    other.resize(workArea().size());
    other.show();
    other.requestActivate();
    ASSERT_TRUE(waitFor([&] { return other.isActive() && shownAlert() == ShownAlert(); }));
    EXPECT_EQ(QProcess::execute(program, {QStringLiteral("--home"), home.path()}), 0);
    expectAlert(confirmation);
    press("Escape");
    expectNoWindows();
    EXPECT_EQ(toolRuns(), QStringList());
}

}  // namespace
}  // namespace quenchly
