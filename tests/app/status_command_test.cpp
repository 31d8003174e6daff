#include <gtest/gtest.h>

#include <QProcess>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

constexpr const char* fixedNow = "2026-03-01T12:00:00Z";

ProgramRun runStatus(const QStringList& arguments, const std::map<std::string, std::string>& variables = {})
{
    return testing::runProgram(QStringLiteral(QUENCHLY_STATUS_PATH), arguments, variables);
}

fs::path situations()
{
    return QUENCHLY_STATUS_SITUATIONS;
}

QStringList optionsFor(const fs::path& situation)
{
    return {QStringLiteral("--data-home"),     QString::fromStdString(situation.string()),
            QStringLiteral("--launch-agents"), QString::fromStdString((situation / "agents").string()),
            QStringLiteral("--now"),           QString::fromLatin1(fixedNow),
            QStringLiteral("--language"),      QStringLiteral("en"),
            QStringLiteral("--no-live")};
}

std::string content(const fs::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// Every situation's folder holds what the command prints for it. Run with QUENCHLY_ACCEPT_OUTPUT=1 to write the files
/// anew, and read what changed before committing it.
class GoldenOutput : public ::testing::TestWithParam<std::string> {
protected:
    void expectOutput(const char* fileName, const QStringList& format)
    {
        const fs::path situation = situations() / GetParam();
        const ProgramRun run = runStatus(optionsFor(situation) + format);
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.errors, "");
        if (qEnvironmentVariableIsSet("QUENCHLY_ACCEPT_OUTPUT"))
            std::ofstream(situation / fileName, std::ios::binary) << run.output;
        ASSERT_FALSE(run.output.empty());
        EXPECT_EQ(run.output, content(situation / fileName));
    }
};

TEST_P(GoldenOutput, Plain)
{
    expectOutput("expected.txt", {});
}

TEST_P(GoldenOutput, Json)
{
    expectOutput("expected.json", {QStringLiteral("--json")});
}

TEST_P(GoldenOutput, Bar)
{
    expectOutput("expected-bar.json", {QStringLiteral("--bar")});
}

std::vector<std::string> situationNames()
{
    std::vector<std::string> names;
    for (const auto& folder : fs::directory_iterator(situations()))
        names.push_back(folder.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Situations, GoldenOutput, ::testing::ValuesIn(situationNames()), [](const auto& situation) {
    std::string name = situation.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(StatusCommand, JsonHasEveryFieldInDeclarationOrder)
{
    const ProgramRun run = runStatus(optionsFor(situations() / "holding") + QStringList{QStringLiteral("--json")});
    const auto object = nlohmann::ordered_json::parse(run.output);
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"icon", "barTint", "headline", "detail", "lastCheckISO", "lastCheckAge",
                                              "pausedTargets", "quarantine", "tone", "observeOnly",
                                              "managementDisabled", "metricsLine", "lastMetrics", "swapCritical",
                                              "stillOverloaded", "slowActive", "agentInstalled", "memoryReliefTip"}));
}

TEST(StatusCommand, ALanguageIsShownWhenAskedFor)
{
    for (const auto& [code, word] : std::map<std::string, std::string>{{"ja", "チェック未設定"},
                                                                       {"ko", "검사 미설정"},
                                                                       {"zh-Hans", "检查未设置"},
                                                                       {"zhHant", "檢查未設定"},
                                                                       {"zh-TW", "檢查未設定"},
                                                                       {"fil", "Hindi pa naka-set ang checks"},
                                                                       {"tl", "Hindi pa naka-set ang checks"}}) {
        const testing::ScratchFolder home;
        const ProgramRun run = runStatus({QStringLiteral("--home"), QString::fromStdString(home.path().string()),
                                          QStringLiteral("--language"), QString::fromStdString(code)});
        EXPECT_EQ(run.output.substr(0, run.output.find('\n')), word) << code;
    }
}

TEST(StatusCommand, TheHomeFolderHoldsDataAndLaunchAgents)
{
    const testing::ScratchFolder home;
    home.write("Library/Application Support/Quenchly/state/heat-state.json",
               R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    home.write("Library/LaunchAgents/com.brindlemoor.quenchly.plist", "<plist/>");
    const ProgramRun run =
        runStatus({QStringLiteral("--home"), QString::fromStdString(home.path().string()), QStringLiteral("--now"),
                   QString::fromLatin1(fixedNow), QStringLiteral("--no-live")});
    EXPECT_EQ(run.output, "Overload. Watching.\nProtection On\nHigh load. Watching.\nLast check 30s ago\n");
}

TEST(StatusCommand, ALiveSampleReplacesTheFilesFigures)
{
    QStringList options = optionsFor(situations() / "holding") + QStringList{QStringLiteral("--json")};
    options.removeAll(QStringLiteral("--no-live"));
    const auto object = nlohmann::json::parse(runStatus(options).output);
    // The file speaks of 8 processors and a load of 7.52 exactly; a live reading has more digits or other processors.
    EXPECT_TRUE(object["lastMetrics"]["load1"] != 7.52 || object["lastMetrics"]["cpuCount"] != 8);
    const std::string line = object["metricsLine"];
    EXPECT_EQ(line.rfind("load ", 0), 0U) << line;
    EXPECT_EQ(object["detail"].get<std::string>().rfind(line, 0), 0U);
}

TEST(StatusCommand, TheEnvironmentsFolderIsUsedWhenItHoldsAState)
{
    const testing::ScratchFolder home;
    const auto folder = home.write("elsewhere/state/heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z"})");
    const ProgramRun run = runStatus({QStringLiteral("--home"), QString::fromStdString(home.path().string()),
                                      QStringLiteral("--json"), QStringLiteral("--no-live")},
                                     {{"QUENCHLY_HOME", (home / "elsewhere").string()}});
    EXPECT_EQ(nlohmann::json::parse(run.output)["lastCheckISO"], "2026-03-01T11:59:30Z");
}

TEST(StatusCommand, ACommaDecimalLocaleChangesNothing)
{
    const QStringList options = optionsFor(situations() / "swap-critical") + QStringList{QStringLiteral("--json")};
    EXPECT_EQ(runStatus(options, {{"LC_ALL", "de_DE.UTF-8"}}).output, runStatus(options).output);
}

struct RefusedLine {
    QStringList arguments;
    std::string message;
};

TEST(StatusCommand, AWrongCommandLineIsOneLineOfErrorAndStatusTwo)
{
    const auto s = [](const char* text) { return QString::fromLatin1(text); };
    const RefusedLine lines[] = {
        {{s("--bogus")}, "quenchly-status: unknown option: --bogus\n"},
        {{s("-x")}, "quenchly-status: unknown option: -x\n"},
        {{s("-xj"), s("--json")}, "quenchly-status: unknown option: -x\n"},
        {{s("--json=1")}, "quenchly-status: unknown option: --json=1\n"},
        {{s("--now")}, "quenchly-status: option needs a value: --now\n"},
        {{s("--now"), s("yesterday")}, "quenchly-status: not an ISO-8601 time: yesterday\n"},
        {{s("--language"), s("fr")}, "quenchly-status: unknown language: fr (en, ja, fil, zh-Hans, zh-Hant, ko)\n"},
        {{s("--json"), s("--bar")}, "quenchly-status: --json and --bar exclude each other\n"},
        {{s("--home"), s("")}, "quenchly-status: a folder's name is empty\n"},
        {{s("--data-home="), s("--json")}, "quenchly-status: a folder's name is empty\n"},
        {{s("--launch-agents"), s("")}, "quenchly-status: a folder's name is empty\n"},
        {{s("something")}, "quenchly-status: unexpected argument: something\n"},
    };
    for (const auto& [arguments, message] : lines) {
        const ProgramRun run = runStatus(arguments);
        EXPECT_EQ(run.exitStatus, 2) << message;
        EXPECT_EQ(run.errors, message);
        EXPECT_EQ(run.output, "");
    }
}

TEST(StatusCommand, HelpAndVersionGoToStandardOutput)
{
    const ProgramRun help = runStatus({QStringLiteral("--help")});
    EXPECT_EQ(help.exitStatus, 0);
    for (const char* option : {"--json", "--bar", "--watch", "--no-live", "--home DIR", "--data-home DIR",
                               "--launch-agents DIR", "--now ISO", "--language CODE"})
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    EXPECT_EQ(runStatus({QStringLiteral("--version")}).output, "quenchly-status " QUENCHLY_VERSION "\n");
}

TEST(StatusCommand, AStateThatCannotBeReadIsShownAsAnEmptyOneAsWhenTheApplicationStarts)
{
    const testing::ScratchFolder home;
    home.makeFifo("data/state/heat-state.json");
    home.write("agents/com.brindlemoor.quenchly.plist", "<plist/>");
    const ProgramRun run = runStatus({QStringLiteral("--data-home"), QString::fromStdString((home / "data").string()),
                                      QStringLiteral("--launch-agents"),
                                      QString::fromStdString((home / "agents").string()), QStringLiteral("--bar")});
    EXPECT_EQ(nlohmann::json::parse(run.output)["class"], "stale");
}

/// A running `--watch`, read line by line.
class Watch {
public:
    explicit Watch(const QStringList& arguments)
    {
        process_.start(QStringLiteral(QUENCHLY_STATUS_PATH), arguments + QStringList{QStringLiteral("--watch")});
    }
    ~Watch()
    {
        process_.kill();
        process_.waitForFinished();
    }
    std::string nextLine()
    {
        while (!process_.canReadLine() && process_.waitForReadyRead(60'000)) {
        }
        return process_.readLine().toStdString();
    }
    QProcess& process() { return process_; }

private:
    QProcess process_;
};

TEST(StatusCommand, WatchPrintsOnlyWhatChanged)
{
    const testing::ScratchFolder home;
    home.write("agents/com.brindlemoor.quenchly.plist", "<plist/>");
    const auto write = [&](const char* json) { home.replace("data/state/heat-state.json", json); };
    write(R"({"lastCheck":"2026-03-01T11:59:30Z"})");
    Watch watch({QStringLiteral("--data-home"), QString::fromStdString((home / "data").string()),
                 QStringLiteral("--launch-agents"), QString::fromStdString((home / "agents").string()),
                 QStringLiteral("--now"), QString::fromLatin1(fixedNow), QStringLiteral("--no-live"),
                 QStringLiteral("--bar"), QStringLiteral("--language"), QStringLiteral("en")});
    EXPECT_EQ(nlohmann::json::parse(watch.nextLine())["class"], "cool");
    write(R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    EXPECT_EQ(nlohmann::json::parse(watch.nextLine())["class"], "hotWatch") << "the unchanged status was printed again";
    std::filesystem::remove(home / "data/state/heat-state.json");
    EXPECT_EQ(nlohmann::json::parse(watch.nextLine())["class"], "stale");
}

TEST(StatusCommand, WatchKeepsTheLastStatusWhileTheStateCannotBeRead)
{
    const testing::ScratchFolder home;
    home.write("agents/com.brindlemoor.quenchly.plist", "<plist/>");
    home.replace("data/state/heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    Watch watch({QStringLiteral("--data-home"), QString::fromStdString((home / "data").string()),
                 QStringLiteral("--launch-agents"), QString::fromStdString((home / "agents").string()),
                 QStringLiteral("--now"), QString::fromLatin1(fixedNow), QStringLiteral("--no-live"),
                 QStringLiteral("--bar")});
    EXPECT_EQ(nlohmann::json::parse(watch.nextLine())["class"], "hotWatch");
    std::filesystem::remove(home / "data/state/heat-state.json");
    home.makeFolder("data/state/heat-state.json");
    // Long enough for a refresh or two; what arrives next must be what the file says afterwards.
    EXPECT_FALSE(watch.process().waitForReadyRead(2500));
    std::filesystem::remove(home / "data/state/heat-state.json");
    home.replace("data/state/heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z"})");
    EXPECT_EQ(nlohmann::json::parse(watch.nextLine())["class"], "cool");
}

}  // namespace
}  // namespace quenchly
