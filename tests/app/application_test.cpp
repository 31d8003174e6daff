#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

ProgramRun runApplication(const QStringList& arguments, const std::map<std::string, std::string>& variables = {})
{
    return testing::runProgram(QStringLiteral(QUENCHLY_MENUBAR_PATH), arguments, variables);
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
        const ProgramRun run = runApplication({QStringLiteral("--headless"), q(out / "pictures"),
                                               QStringLiteral("--demo"), QString::fromStdString(scenario)});
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
    const ProgramRun run = runApplication({QStringLiteral("--home"), q(home.path()), QStringLiteral("--headless"),
                                           q(out.path()), QStringLiteral("--language"), QStringLiteral("ko")});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_TRUE(fs::is_empty(home.path()));
    std::ifstream status(out / "status.json");
    EXPECT_EQ(nlohmann::json::parse(status)["headline"], "검사 미설정");
}

TEST(Application, AFolderThatCannotBeWrittenIsAClearError)
{
    const testing::ScratchFolder out;
    out.write("file", "");
    const ProgramRun run = runApplication({QStringLiteral("--headless"), q(out / "file/below")});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("cannot write into"), std::string::npos) << run.errors;
}

TEST(Application, AnUnknownScenarioIsAClearError)
{
    const testing::ScratchFolder out;
    const ProgramRun run = runApplication(
        {QStringLiteral("--headless"), q(out.path()), QStringLiteral("--demo"), QStringLiteral("armageddon")});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("armageddon"), std::string::npos) << run.errors;
}

TEST(Application, AWrongOptionIsOneLineAndStatusTwo)
{
    const ProgramRun run = runApplication({QStringLiteral("--bogus")});
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.errors, "quenchly-menubar: Unknown option 'bogus'.\n");
}

TEST(Application, VersionAndHelpNeedNoDisplay)
{
    const std::map<std::string, std::string> noDisplay{
        {"QT_QPA_PLATFORM", ""}, {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};
    EXPECT_EQ(runApplication({QStringLiteral("--version")}, noDisplay).output,
              "quenchly-menubar " QUENCHLY_VERSION "\n");
    EXPECT_EQ(runApplication({QStringLiteral("--help")}, noDisplay).output.rfind("Usage: ", 0), 0U);
    const ProgramRun run = runApplication({}, noDisplay);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors.rfind("quenchly-menubar: no display", 0), 0U) << run.errors;
}

TEST(Application, ASecondStartHandsOverToTheFirstAndPrintsNothing)
{
    const testing::ScratchFolder home;
    const fs::path runtime = home.makeFolder("runtime");
    fs::permissions(runtime, fs::perms::owner_all);
    const std::map<std::string, std::string> variables{{"XDG_RUNTIME_DIR", runtime.string()},
                                                       {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables)
        environment.insert(QString::fromStdString(name), QString::fromStdString(value));
    QProcess first;
    first.setProcessEnvironment(environment);
    first.start(QStringLiteral(QUENCHLY_MENUBAR_PATH), {QStringLiteral("--home"), q(home.path())});
    ASSERT_TRUE(first.waitForStarted());
    const auto listens = [&] {
        for (const auto& entry : fs::directory_iterator(runtime))
            if (entry.path().extension() == ".socket")
                return true;
        return false;
    };
    while (!listens() && !first.waitForFinished(20)) {
    }
    ASSERT_EQ(first.state(), QProcess::Running) << first.readAllStandardError().toStdString();

    const ProgramRun second = runApplication({QStringLiteral("--home"), q(home.path())}, variables);
    EXPECT_EQ(second.exitStatus, 0);
    EXPECT_EQ(second.output, "");
    EXPECT_EQ(second.errors, "");
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    EXPECT_TRUE(first.waitForFinished());
}

}  // namespace
}  // namespace quenchly
