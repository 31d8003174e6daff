#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <unistd.h>

#include <QProcess>
#include <QTest>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <system_error>

#include "program.h"
#include "stand_in.h"
#include "state_watcher.h"
#include "status_json.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

enum class Lack { room, files, writing };

std::string nameOf(Lack lack)
{
    return lack == Lack::room ? "Full" : lack == Lack::files ? "NoMoreFiles" : "ReadOnly";
}

QString q(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A home folder on a disk of its own, on which the program has run before, and to which nothing can be written any
/// more.
class FullDiskTest : public ::testing::TestWithParam<Lack> {
protected:
    FullDiskTest()
    {
        if (::mount("quenchly-test", disk.c_str(), "tmpfs", 0, "size=1m,nr_inodes=200") != 0)
            throw std::system_error(errno, std::generic_category(), "mount");
        fs::create_directories(home.home);
        fs::create_directories(disk / "runtime");
        fs::permissions(disk / "runtime", fs::perms::owner_all);
        fs::create_directories(disk / "pictures");
        std::ofstream(disk / "pictures/menu-bar.png") << "an older picture";
        EXPECT_TRUE(soak::runStandIn(home, {"scenario", "holding"}));
    }
    ~FullDiskTest() override
    {
        watcher.reset();
        ::umount2(disk.c_str(), MNT_DETACH);
    }

    /// The program's first run, which turns Open at Login on, and then the lack.
    void startWatcher()
    {
        watcher = std::make_unique<StateWatcher>(system());
        ASSERT_TRUE(watcher->openAtLogin());
        exhaust();
    }

    void exhaust()
    {
        switch (GetParam()) {
            case Lack::room:
                return fill();
            case Lack::files:
                for (int i = 0; std::ofstream(disk / ("filler-" + std::to_string(i))); ++i) {
                }
                return;
            case Lack::writing:
                ASSERT_EQ(::mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
        }
    }

    void fill() const
    {
        const int file = ::open((disk / "filler").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const std::string page(4096, 'x');
        while (::write(file, page.data(), page.size()) > 0) {
        }
        ::close(file);
    }

    System system()
    {
        System made = makeSystem(home.home);
        made.log = [this](const std::string& line) { log.push_back(line); };
        made.environment["PATH"] = fs::path(QUENCHLY_DEMO_TOOL_PATH).parent_path();
        made.environment["QUENCHLY_LAUNCH_AGENTS"] = home.launchAgents();
        made.runAlert = [this](const Alert& alert) { return alerts.push_back(alert.title), std::nullopt; };
        return made;
    }

    /// Every file of the home folder, but for what is there to fill the disk.
    std::map<std::string, std::string> files() const
    {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(home.home))
            if (entry.is_regular_file())
                found[entry.path().string()] = contentOf(entry.path());
        return found;
    }

    fs::path settingsFolder() const { return home.home / ".config"; }
    fs::path loginEntry() const { return settingsFolder() / "autostart/quenchly.desktop"; }

    ProgramRun run(const std::vector<std::string>& arguments) const
    {
        return testing::runProgram(QUENCHLY_MENUBAR_PATH, arguments,
                                   {{"XDG_RUNTIME_DIR", disk / "runtime"}, {"TMPDIR", disk / "runtime"}});
    }

    testing::ScratchFolder scratch;
    fs::path disk = scratch.makeFolder("disk");
    soak::CheckedHome home{disk / "home"};
    std::vector<std::string> log;
    std::vector<std::string> alerts;
    std::unique_ptr<StateWatcher> watcher;
};

TEST_P(FullDiskTest, TheRightStatusIsShown)
{
    exhaust();
    StateWatcher fresh(system());
    EXPECT_EQ(fresh.status().pausedTargets.size(), 2U);
    const ProgramRun printed = testing::runProgram(QUENCHLY_STATUS_PATH, {"--json", "--home", home.home});
    EXPECT_EQ(printed.exitStatus, 0);
    EXPECT_EQ(nlohmann::json::parse(printed.output)["headline"], fresh.status().headline.utf8());
}

TEST_P(FullDiskTest, TheProgramStartsSaysWhatItLacksAndQuits)
{
    exhaust();
    const auto before = files();
    QProcess application;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), q(disk / "runtime"));
    application.setProcessEnvironment(environment);
    application.setReadChannel(QProcess::StandardError);
    application.start(QStringLiteral(QUENCHLY_MENUBAR_PATH), {QStringLiteral("--home"), q(home.home)});
    std::string line;
    while (line.rfind("quenchly-menubar: ", 0) != 0 && (application.canReadLine() || application.waitForReadyRead()))
        line = application.readLine().toStdString();
    EXPECT_EQ(line.rfind("quenchly-menubar: starting it again will not open its panel: cannot ", 0), 0U) << line;
    application.terminate();
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(application.exitCode(), 0);
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(fs::is_empty(disk / "runtime"));
}

TEST_P(FullDiskTest, SettingsThatCannotBeWrittenStayWhole)
{
    startWatcher();
    const auto before = files();
    EXPECT_FALSE(watcher->system().loginItem->registerItem().empty());
    watcher->system().userDefaults->setBool("something.longer", true);
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(makeSystem(home.home).userDefaults->contains("quenchly.openAtLogin.didApplyDefault"));
}

TEST_P(FullDiskTest, OpenAtLoginSaysWhyItStaysAsItIs)
{
    startWatcher();
    const std::string entry = contentOf(loginEntry());
    watcher->setOpenAtLogin(false);
    if (GetParam() == Lack::writing) {
        EXPECT_TRUE(watcher->openAtLogin());
        EXPECT_EQ(contentOf(loginEntry()), entry);
    } else {
        EXPECT_FALSE(watcher->openAtLogin());  // deleting needs no room
        EXPECT_FALSE(fs::exists(loginEntry()));
        exhaust();
        watcher->setOpenAtLogin(true);
        EXPECT_FALSE(watcher->openAtLogin());
        EXPECT_TRUE(fs::is_empty(loginEntry().parent_path()));
    }
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log.front().rfind("Quenchly Open at Login failed: ", 0), 0U) << log.front();
    EXPECT_GT(log.front().size(), std::string("Quenchly Open at Login failed: ").size());
}

TEST_P(FullDiskTest, AProtectionThatTheToolCannotChangeStaysAndTheRowIsReadyAgain)
{
    startWatcher();
    const auto before = files();
    ASSERT_TRUE(watcher->cliAvailable());
    watcher->setProtect(false);
    ASSERT_TRUE(watcher->protectBusy());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !watcher->protectBusy(); }, 60'000));
    EXPECT_EQ(watcher->status().pausedTargets.size(), 2U);
    EXPECT_EQ(files(), before);
}

TEST_P(FullDiskTest, AProblemCanBeReported)
{
    startWatcher();
    watcher->openReportProblem();
    EXPECT_EQ(alerts, std::vector<std::string>{"Support email copied"});
}

TEST_P(FullDiskTest, HeadlessSaysThatItCannotWriteAndLeavesOlderPictures)
{
    exhaust();
    const ProgramRun failed = run({"--home", home.home, "--headless", disk / "pictures"});
    EXPECT_EQ(failed.exitStatus, 1);
    EXPECT_NE(failed.errors.find("cannot write into " + (disk / "pictures").string()), std::string::npos)
        << failed.errors;
    EXPECT_EQ(contentOf(disk / "pictures/menu-bar.png"), "an older picture");
    const auto entries = fs::directory_iterator(disk / "pictures");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_P(FullDiskTest, ATrialThatHasNoFolderSaysSo)
{
    exhaust();
    const fs::path pictures = scratch.makeFolder("elsewhere");
    const ProgramRun failed = run({"--demo", "calm", "--headless", pictures});
    EXPECT_EQ(failed.exitStatus, 1);
    EXPECT_NE(failed.errors.find("quenchly-menubar: "), std::string::npos) << failed.errors;
    EXPECT_TRUE(fs::is_empty(pictures));
}

INSTANTIATE_TEST_SUITE_P(, FullDiskTest, ::testing::Values(Lack::room, Lack::files, Lack::writing),
                         [](const auto& disk) { return nameOf(disk.param); });

}  // namespace
}  // namespace quenchly
