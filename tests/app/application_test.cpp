#include <gtest/gtest.h>
#include <signal.h>

#include <QImage>
#include <QProcess>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "patience.h"
#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

ProgramRun runApplication(const std::vector<std::string>& arguments,
                          const std::map<std::string, std::string>& variables = {})
{
    return testing::runProgram(QUENCHLY_MENUBAR_PATH, arguments, variables);
}

QString q(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

/// The glyph's colour as the picture has it in the square left of the gust of wind.
QRgb glyphColor(const QImage& menuBar)
{
    return menuBar.pixel(2 * (10 + 4), menuBar.height() / 2);
}

TEST(Application, HeadlessRendersEveryScenarioAtTwiceTheSize)
{
    const std::map<std::string, QRgb> scenarios{
        {"calm", qRgb(0x4E, 0x93, 0xC6)},       {"overload", qRgb(0x6B, 0x8F, 0xB5)},
        {"holding", qRgb(0xE1, 0x9A, 0x3C)},    {"easing", qRgb(0xE1, 0x9A, 0x3C)},
        {"false-heat", qRgb(0x8E, 0x8A, 0x84)}, {"swap-critical", qRgb(0xE1, 0x9A, 0x3C)},
        {"stale", qRgb(0x8E, 0x8A, 0x84)},      {"not-set-up", qRgb(0x8E, 0x8A, 0x84)},
    };
    for (const auto& [scenario, color] : scenarios) {
        const testing::ScratchFolder out;
        const ProgramRun run = runApplication({"--headless", out / "pictures", "--demo", scenario});
        ASSERT_EQ(run.exitStatus, 0) << scenario << run.errors;
        EXPECT_NE(run.output.find((out / "pictures").string()), std::string::npos);
        const QImage menuBar(q(out / "pictures/menu-bar.png"));
        ASSERT_FALSE(menuBar.isNull()) << scenario;
        EXPECT_EQ(menuBar.height(), 56);
        EXPECT_EQ(glyphColor(menuBar), color) << scenario;
        EXPECT_EQ(QImage(q(out / "pictures/panel.png")).width(), 2 * 380) << scenario;
        std::ifstream status(out / "pictures/status.json");
        EXPECT_TRUE(nlohmann::json::parse(status).contains("headline")) << scenario;
    }
}

TEST(Application, HeadlessLeavesTheHomeFolderAlone)
{
    const testing::ScratchFolder home;
    const testing::ScratchFolder out;
    const ProgramRun run = runApplication({"--home", home.path(), "--headless", out.path(), "--language", "fil"});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_TRUE(fs::is_empty(home.path()));
    std::ifstream status(out / "status.json");
    EXPECT_EQ(nlohmann::json::parse(status)["headline"], "Hindi pa naka-set ang checks");
}

TEST(Application, ItSaysNothingOfARuntimeFolderThatIsMissingOrOpenToOthers)
{
    const testing::ScratchFolder out;
    const fs::path open = out.makeFolder("open");
    for (const std::string& runtime : {std::string(), open.string(), (out / "missing").string()}) {
        const ProgramRun run = runApplication({"--home", out / "home", "--headless", out / "pictures"},
                                              {{"XDG_RUNTIME_DIR", runtime}, {"TMPDIR", out.path().string()}});
        EXPECT_EQ(run.exitStatus, 0) << runtime;
        EXPECT_EQ(run.errors, "") << runtime;
    }
}

#ifndef __APPLE__

/// A fontconfig that knows no other fonts than the Latin ones of one family, and takes their serifs for one language.
class ApplicationFonts : public ::testing::Test {
protected:
    ProgramRun render(const std::string& language, const std::string& languageWithSerifs = "none",
                      std::map<std::string, std::string> variables = {})
    {
        scratch.write("fonts.conf", R"(<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>
<dir>/usr/share/fonts</dir><cachedir>)" +
                                        (scratch / "cache").string() + R"(</cachedir>
<selectfont><rejectfont><glob>*.*</glob></rejectfont>
<acceptfont><glob>*/DejaVuSans.ttf</glob><glob>*/DejaVuSerif.ttf</glob></acceptfont></selectfont>
<match target="pattern"><test name="lang" compare="contains"><string>)" +
                                        languageWithSerifs +
                                        R"(</string></test><edit name="family" mode="prepend" binding="strong">
<string>DejaVu Serif</string></edit></match></fontconfig>)");
        variables["FONTCONFIG_FILE"] = (scratch / "fonts.conf").string();
        std::vector<std::string> arguments{"--home", scratch / "home", "--headless", scratch / "out"};
        if (!language.empty())
            arguments.insert(arguments.end(), {"--language", language});
        return runApplication(arguments, variables);
    }

    QImage panel() const { return QImage(q(scratch / "out/panel.png")); }

    std::string headline() const
    {
        std::ifstream status(scratch / "out/status.json");
        return nlohmann::json::parse(status)["headline"];
    }

    testing::ScratchFolder scratch;
};

TEST_F(ApplicationFonts, TheChosenLanguageReachesTheChoiceOfFonts)
{
    ASSERT_EQ(render("fil").exitStatus, 0);
    const QImage plain = panel();
    ASSERT_FALSE(plain.isNull());
    render("fil", "en");
    EXPECT_EQ(panel(), plain);
    render("fil", "fil");
    EXPECT_NE(panel(), plain);
}

TEST_F(ApplicationFonts, TheLanguageOfTheEnvironmentReachesTheChoiceOfFonts)
{
    const std::map<std::string, std::string> filipino{{"LC_ALL", "en_US.UTF-8"}, {"LANGUAGE", "fil"}};
    ASSERT_EQ(render("", "none", filipino).exitStatus, 0);
    EXPECT_EQ(headline(), "Hindi pa naka-set ang checks");
    const QImage plain = panel();
    render("", "fil", filipino);
    EXPECT_NE(panel(), plain);
}

TEST_F(ApplicationFonts, WhereNoFontHasTheScriptEnglishIsShownAndAPackageNamed)
{
    ASSERT_EQ(render("en").exitStatus, 0);
    const QImage english = panel();
    for (const char* language : {"ja", "ko", "zh-Hans", "zh-Hant"}) {
        const ProgramRun run = render(language);
        ASSERT_EQ(run.exitStatus, 0) << run.errors;
        EXPECT_EQ(headline(), "Checks not set up");
        EXPECT_EQ(panel(), english);
        EXPECT_EQ(run.errors, std::string("quenchly-menubar: no font has all characters of the language ") + language +
                                  ", so that English is shown; the Debian package fonts-noto-cjk brings one\n");
    }
}

TEST_F(ApplicationFonts, ALanguageInLatinLettersNeedsNoOtherFonts)
{
    const ProgramRun run = render("fil");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(headline(), "Hindi pa naka-set ang checks");
}

#endif

TEST(Application, AFolderThatCannotBeWrittenIsAClearError)
{
    const testing::ScratchFolder out;
    out.write("file", "");
    const ProgramRun run = runApplication({"--headless", out / "file/below"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("cannot write into"), std::string::npos) << run.errors;
}

TEST(Application, AnUnknownScenarioIsAClearError)
{
    const testing::ScratchFolder out;
    const ProgramRun run = runApplication({"--headless", out.path(), "--demo", "armageddon"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("armageddon"), std::string::npos) << run.errors;
}

TEST(Application, AWrongOptionIsOneLineAndStatusTwo)
{
    const ProgramRun run = runApplication({"--bogus"});
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.errors, "quenchly-menubar: Unknown option 'bogus'.\n");
}

TEST(Application, VersionAndHelpNeedNoDisplay)
{
    const std::map<std::string, std::string> noDisplay{
        {"QT_QPA_PLATFORM", ""}, {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};
    EXPECT_EQ(runApplication({"--version"}, noDisplay).output, "quenchly-menubar " QUENCHLY_VERSION "\n");
    EXPECT_EQ(runApplication({"--help"}, noDisplay).output.rfind("Usage: ", 0), 0U);
    const ProgramRun run = runApplication({}, noDisplay);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors.rfind("quenchly-menubar: no display", 0), 0U) << run.errors;
}

/// The application, running with a runtime folder and a folder for temporary files of its own.
class RunningApplicationTest : public ::testing::Test {
protected:
    void SetUp() override { fs::permissions(scratch.makeFolder("runtime"), fs::perms::owner_all); }

    ~RunningApplicationTest() override
    {
        application.kill();
        application.waitForFinished(testing::patience);
    }

    /// Begins to run the program, whose environment has `variables` too.
    void launch(const std::string& program, const std::vector<std::string>& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : variables)
            environment.insert(QString::fromStdString(name), QString::fromStdString(value));
        application.setProcessEnvironment(environment);
        QStringList words;
        for (const std::string& argument : arguments)
            words += QString::fromStdString(argument);
        application.start(QString::fromStdString(program), words);
        ASSERT_TRUE(application.waitForStarted(testing::patience));
    }

    void start(const std::string& program, const std::vector<std::string>& arguments)
    {
        launch(program, arguments);
        while (!listens() && !application.waitForFinished(20)) {
        }
        ASSERT_EQ(application.state(), QProcess::Running) << application.readAllStandardError().toStdString();
    }

    void start(const std::vector<std::string>& arguments) { start(QUENCHLY_MENUBAR_PATH, arguments); }

    /// The program on the same home folder again. The first one has a time to answer in, for which a machine can be
    /// too busy.
    ProgramRun startAgain() const
    {
        ProgramRun run;
        for (int attempt = 0; attempt < 10 && run.exitStatus != 0; ++attempt)
            run = runApplication({"--home", home}, variables);
        return run;
    }

    bool listens() const
    {
        for (const auto& entry : fs::directory_iterator(runtime))
            if (entry.path().extension() == ".socket")
                return true;
        return false;
    }

    /// Its first words, those of Qt included.
    void expectItSaysAndRuns(const std::string& words)
    {
        application.setReadChannel(QProcess::StandardError);
        while (!application.canReadLine() && application.waitForReadyRead(testing::patience)) {
        }
        const std::string line = application.readLine().toStdString();
        EXPECT_TRUE(line.starts_with("quenchly-menubar: " + words)) << line;
        EXPECT_EQ(application.state(), QProcess::Running);
    }

    void signal(int number) const { ASSERT_EQ(::kill(static_cast<pid_t>(application.processId()), number), 0); }

    void expectACleanEnd()
    {
        ASSERT_TRUE(application.waitForFinished(testing::patience));
        EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(application.exitCode(), 0);
        EXPECT_TRUE(fs::is_empty(runtime));
        EXPECT_TRUE(fs::is_empty(temporary));
    }

    testing::ScratchFolder scratch;
    fs::path home = scratch.makeFolder("home");
    fs::path runtime = scratch / "runtime";
    fs::path temporary = scratch.makeFolder("temporary");
    std::map<std::string, std::string> variables{{"XDG_RUNTIME_DIR", runtime.string()},
                                                 {"TMPDIR", temporary.string()},
                                                 {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}};
    QProcess application;
};

TEST_F(RunningApplicationTest, ASecondStartHandsOverToTheFirstAndPrintsNothing)
{
    start({"--home", home});
    const ProgramRun second = startAgain();
    EXPECT_EQ(second.exitStatus, 0);
    EXPECT_EQ(second.output, "");
    EXPECT_EQ(second.errors, "");
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(RunningApplicationTest, EachSignalThatEndsProgramsLeavesNothingBehind)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        start({"--demo", "holding"});
        EXPECT_FALSE(fs::is_empty(temporary));
        signal(number);
        expectACleanEnd();
    }
}

TEST_F(RunningApplicationTest, AHangupThatWasIgnoredStaysIgnored)
{
    start("/bin/sh", {"-c", "trap '' HUP; exec \"$@\"", "sh", QUENCHLY_MENUBAR_PATH, "--home", home});
    signal(SIGHUP);
    EXPECT_EQ(startAgain().exitStatus, 0);
    EXPECT_EQ(application.state(), QProcess::Running);
    signal(SIGTERM);
    expectACleanEnd();
}

TEST_F(RunningApplicationTest, ATrialsDashboardEndsWithIt)
{
    variables["QUENCHLY_DASHBOARD_PORT"] = "0";
    start({"--demo", "calm"});
    fs::path data;
    for (const auto& entry : fs::recursive_directory_iterator(temporary))
        if (entry.path().filename() == "state")
            data = entry.path().parent_path();
    QProcess dashboard;
    QProcessEnvironment environment = application.processEnvironment();
    environment.insert(QStringLiteral("QUENCHLY_HOME"), q(data));
    dashboard.setProcessEnvironment(environment);
    dashboard.start(QStringLiteral(QUENCHLY_DEMO_TOOL_PATH), {QStringLiteral("serve")});
    ASSERT_TRUE(dashboard.waitForReadyRead(testing::patience));
    signal(SIGTERM);
    expectACleanEnd();
    EXPECT_TRUE(dashboard.waitForFinished(testing::patience));
    EXPECT_EQ(dashboard.exitCode(), 0);
}

TEST_F(RunningApplicationTest, WhereItCannotBeReachedItSaysSoAndRuns)
{
    variables["XDG_RUNTIME_DIR"] = variables["TMPDIR"] = "/proc";
    launch(QUENCHLY_MENUBAR_PATH, {"--home", home});
    expectItSaysAndRuns("starting it again will not open its panel: /proc/quenchly-");
}

TEST_F(RunningApplicationTest, AStrangersFolderInPlaceOfItsOwnIsToldAndDoesNotEndIt)
{
    const auto stranger = testing::anotherUser();
    if (!stranger)
        GTEST_SKIP() << "only root can act as another user";
    fs::permissions(temporary, fs::perms::all | fs::perms::sticky_bit);
    const fs::path folder = temporary / "quenchly-0";
    ASSERT_TRUE(testing::runAsAnotherUser(*stranger, [&] { return fs::create_directory(folder); }));
    variables["XDG_RUNTIME_DIR"] = "";
    launch(QUENCHLY_MENUBAR_PATH, {"--home", home});
    expectItSaysAndRuns("starting it again will not open its panel: " + folder.string());
}

}  // namespace
}  // namespace quenchly
