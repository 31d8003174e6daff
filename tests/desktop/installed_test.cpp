#include <gtest/gtest.h>

#include <QFile>
#include <fstream>
#include <memory>

#include "application_on_desktop.h"
#include "debian_package.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

class InstalledTest : public ApplicationOnDesktop {
protected:
    static void SetUpTestSuite()
    {
        folder = std::make_unique<ScratchFolder>();
        package = makeDebianPackage(folder->path());
    }
    static void TearDownTestSuite() { folder.reset(); }

    void SetUp() override
    {
        ApplicationOnDesktop::SetUp();
        ASSERT_FALSE(package.empty());
        const ProgramRun run = root.install(package);
        ASSERT_EQ(run.exitStatus, 0) << run.output << run.errors;
    }

    std::string menuEntrysCommand() const
    {
        std::ifstream entry(root / "usr/share/applications/quenchly.desktop");
        for (std::string line; std::getline(entry, line);)
            if (line.starts_with("Exec="))
                return line.substr(5);
        ADD_FAILURE() << "no command in the menu entry";
        return {};
    }

    void startFromMenuEntry()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PATH"), inRoot("usr/bin") + u':' + qEnvironmentVariable("PATH"));
        environment.insert(QStringLiteral("XDG_DATA_DIRS"), inRoot("usr/share") + QStringLiteral(":/usr/share"));
        application.setProcessChannelMode(QProcess::ForwardedChannels);
        application.setProcessEnvironment(environment);
        application.start(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), QStringLiteral("exec %1 \"$@\"").arg(QString::fromStdString(menuEntrysCommand())),
             QStringLiteral("sh"), QStringLiteral("--home"), home.path(), QStringLiteral("--language"),
             QStringLiteral("en")});
        ASSERT_TRUE(application.waitForStarted());
    }

    QString inRoot(const char* path) const { return QString::fromStdString((root / path).string()); }

    PackageRoot root;

private:
    static inline std::unique_ptr<ScratchFolder> folder;
    static inline std::filesystem::path package;
};

TEST_F(InstalledTest, TheMenuEntrysCommandPutsTheIconIntoTheTrayAndAClickOpensThePanel)
{
    playScenario("calm");
    startFromMenuEntry();
    ASSERT_TRUE(waitFor([] { return !colorOnBar(blue).isNull(); }));
    EXPECT_EQ(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(application.processId())),
              inRoot("usr/bin/quenchly-menubar"));
    openPanel();
    keepPicture(QStringLiteral("installed"));
}

TEST_F(InstalledTest, WhatRunsGoesOnWhenThePackageIsPurgedAndBringsNothingBack)
{
    playScenario("calm");
    startFromMenuEntry();
    ASSERT_TRUE(waitFor([] { return !colorOnBar(blue).isNull(); }));
    openPanel();
    const ProgramRun purge = root.purge();
    EXPECT_EQ(purge.exitStatus, 0) << purge.errors;
    EXPECT_EQ(root.entries(), std::set<std::string>());

    playScenario("holding");
    EXPECT_TRUE(waitFor([] { return !colorOnBar(amber).isNull(); }));
    keepPicture(QStringLiteral("purged"));
    clickButton(QStringLiteral("Quit Quenchly"));
    EXPECT_TRUE(waitFor([this] { return application.state() == QProcess::NotRunning; }));
    EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(application.exitCode(), 0);
    EXPECT_EQ(root.entries(), std::set<std::string>());
}

}  // namespace
}  // namespace quenchly
