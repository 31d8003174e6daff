#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QProcess>
#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <nlohmann/json.hpp>

#include "child_process.h"
#include "descriptor.h"
#include "file_reading.h"
#include "patience.h"
#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;
using Words = std::vector<std::string>;

constexpr const char* fixedNow = "2026-03-01T12:00:00Z";

ProgramRun runStatus(const Words& arguments, const std::map<std::string, std::string>& variables = {})
{
    return testing::runProgram(QUENCHLY_STATUS_PATH, arguments, variables);
}

fs::path situations()
{
    return QUENCHLY_STATUS_SITUATIONS;
}

Words operator+(Words words, const Words& more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// What the command shall read, and when: a folder with the data and with the agents' folder.
Words optionsFor(const fs::path& situation)
{
    return {"--data-home", situation, "--launch-agents", situation / "agents", "--now", fixedNow, "--language", "en"};
}

/// Every situation's folder holds what the command prints for it. Run with QUENCHLY_ACCEPT_OUTPUT=1 to write the files
/// anew, and read what changed before committing it.
class GoldenOutput : public ::testing::TestWithParam<std::string> {
protected:
    void expectOutput(const char* fileName, const Words& format)
    {
        const fs::path situation = situations() / GetParam();
        const ProgramRun run = runStatus(optionsFor(situation) + Words{"--no-live"} + format);
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.errors, "");
        if (qEnvironmentVariableIsSet("QUENCHLY_ACCEPT_OUTPUT"))
            std::ofstream(situation / fileName, std::ios::binary) << run.output;
        ASSERT_FALSE(run.output.empty());
        EXPECT_EQ(run.output, testing::contentOf(situation / fileName));
    }
};

TEST_P(GoldenOutput, Plain)
{
    expectOutput("expected.txt", {});
}

TEST_P(GoldenOutput, Json)
{
    expectOutput("expected.json", {"--json"});
}

TEST_P(GoldenOutput, Bar)
{
    expectOutput("expected-bar.json", {"--bar"});
}

/// What --bar prints for a situation; the other formats of one line show the same.
nlohmann::json barOf(const std::string& situation)
{
    const Words options = optionsFor(situations() / situation) + Words{"--no-live", "--bar"};
    return nlohmann::json::parse(runStatus(options).output);
}

std::string withoutEscapes(std::string text)
{
    for (const auto& [escape, character] :
         std::map<std::string, std::string>{{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}})
        text = replacingAll(text, escape, character);
    return text;
}

class OneLine : public ::testing::TestWithParam<std::string> {
protected:
    std::string print(const char* format) const
    {
        const ProgramRun run = runStatus(optionsFor(situations() / GetParam()) + Words{"--no-live", format});
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.errors, "");
        return run.output;
    }
};

TEST_P(OneLine, PlainIsTheTextOfTheBarWithoutMarkup)
{
    EXPECT_EQ(print("--plain"), withoutEscapes(barOf(GetParam())["text"]) + "\n");
}

/// The header and the array of what --bar=i3bar prints.
void expectI3bar(const std::string& output, const nlohmann::json& statuses)
{
    const auto endOfHeader = output.find('\n');
    ASSERT_NE(endOfHeader, std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(output.substr(0, endOfHeader)), (nlohmann::json{{"version", 1}}));
    EXPECT_EQ(nlohmann::json::parse(output.substr(endOfHeader)), statuses) << output;
}

const std::map<std::string, std::string> colors{
    {"cool", "#4E93C6"},        {"protect", "#E19A3C"},      {"hotWatch", "#6B8FB5"},     {"spectrumTrend", "#6B8FB5"},
    {"unprotected", "#F09A74"}, {"spectrumLoop", "#E19A3C"}, {"spectrumFlat", "#4E93C6"},
};

TEST_P(OneLine, I3barHasTheSameTextAndTheGlyphsColourUnlessThatIsGrey)
{
    const nlohmann::json bar = barOf(GetParam());
    nlohmann::json block{{"full_text", withoutEscapes(bar["text"])}};
    if (const auto color = colors.find(bar["class"]); color != colors.end())
        block["color"] = color->second;
    expectI3bar(print("--bar=i3bar"), {{block}});
}

std::vector<std::string> situationNames()
{
    std::vector<std::string> names;
    for (const auto& folder : fs::directory_iterator(situations()))
        names.push_back(folder.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string asTestName(const ::testing::TestParamInfo<std::string>& situation)
{
    std::string name = situation.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Situations, GoldenOutput, ::testing::ValuesIn(situationNames()), asTestName);
INSTANTIATE_TEST_SUITE_P(Situations, OneLine, ::testing::ValuesIn(situationNames()), asTestName);

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
        const ProgramRun run = runStatus({"--home", home.path(), "--language", code});
        EXPECT_EQ(run.output.substr(0, run.output.find('\n')), word) << code;
    }
}

TEST(StatusCommand, ItsOwnWordsAreInTheLanguageAskedFor)
{
    const std::map<std::string, std::pair<std::string, std::string>> words{
        {"en", {"Last check 42s ago", "Eased back"}},
        {"ja", {"前回のチェック: 42s ago", "ペースを落とした対象"}},
        {"ko", {"마지막 검사: 42s ago", "속도를 늦춘 대상"}},
        {"zh-Hans", {"上次检查：42s ago", "已放慢"}},
        {"zh-Hant", {"上次檢查：42s ago", "已放慢"}},
        {"fil", {"Huling check: 42s ago", "Pinabagal"}}};
    for (const auto& [code, expected] : words) {
        Words options = optionsFor(situations() / "holding");
        options.back() = code;
        const std::string output = runStatus(options + Words{"--no-live"}).output;
        EXPECT_NE(output.find("\n" + expected.first + "\n" + expected.second + "\n"), std::string::npos) << output;
    }
}

TEST(StatusCommand, TheHomeFolderHoldsDataAndLaunchAgents)
{
    const testing::ScratchFolder home;
    home.write("Library/Application Support/Quenchly/state/heat-state.json",
               R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})");
    home.write("Library/LaunchAgents/com.brindlemoor.quenchly.plist", "<plist/>");
    const ProgramRun run = runStatus({"--home", home.path(), "--now", fixedNow, "--no-live"});
    EXPECT_EQ(run.output, "Overload. Watching.\nProtection On\nHigh load. Watching.\nLast check 30s ago\n");
}

TEST(StatusCommand, ALiveSampleReplacesTheFilesFigures)
{
    const auto object = nlohmann::json::parse(runStatus(optionsFor(situations() / "holding") + Words{"--json"}).output);
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
    const ProgramRun run =
        runStatus({"--home", home.path(), "--json", "--no-live"}, {{"QUENCHLY_HOME", (home / "elsewhere").string()}});
    EXPECT_EQ(nlohmann::json::parse(run.output)["lastCheckISO"], "2026-03-01T11:59:30Z");
}

TEST(StatusCommand, AHomeFolderThatIsGivenIsNotLeft)
{
    const testing::ScratchFolder scratch;
    scratch.write("elsewhere/state/heat-state.json", R"({"lastCheck":"2026-03-01T11:59:30Z"})");
    const ProgramRun run = runStatus({"--home", scratch.makeFolder("home"), "--json", "--no-live"},
                                     {{"QUENCHLY_HOME", (scratch / "elsewhere").string()}});
    EXPECT_EQ(nlohmann::json::parse(run.output)["lastCheckISO"], nullptr);
}

TEST(StatusCommand, ACommaDecimalLocaleChangesNothing)
{
    const Words options = optionsFor(situations() / "swap-critical") + Words{"--no-live", "--json"};
    EXPECT_EQ(runStatus(options, {{"LC_ALL", "de_DE.UTF-8"}}).output, runStatus(options).output);
}

struct RefusedLine {
    Words arguments;
    std::string message;
};

TEST(StatusCommand, AWrongCommandLineIsOneLineOfErrorAndStatusTwo)
{
    const RefusedLine lines[] = {
        {{"--bogus"}, "quenchly-status: unknown option: --bogus\n"},
        {{"-x"}, "quenchly-status: unknown option: -x\n"},
        {{"-xj", "--json"}, "quenchly-status: unknown option: -x\n"},
        {{"--json=1"}, "quenchly-status: unknown option: --json=1\n"},
        {{"--now"}, "quenchly-status: option needs a value: --now\n"},
        {{"--now", "yesterday"}, "quenchly-status: not an ISO-8601 time: yesterday\n"},
        {{"--language", "fr"}, "quenchly-status: unknown language: fr (en, ja, fil, zh-Hans, zh-Hant, ko)\n"},
        {{"--json", "--bar"}, "quenchly-status: --json and --bar exclude each other\n"},
        {{"--plain", "--json"}, "quenchly-status: --plain and --json exclude each other\n"},
        {{"--bar", "--plain"}, "quenchly-status: --bar and --plain exclude each other\n"},
        {{"--bar", "--bar=i3bar"}, "quenchly-status: --bar and --bar=i3bar exclude each other\n"},
        {{"--watch", "--bar=i3bar", "--plain"}, "quenchly-status: --bar=i3bar and --plain exclude each other\n"},
        {{"--bar=waybar"}, "quenchly-status: unknown bar: waybar (i3bar)\n"},
        {{"--bar="}, "quenchly-status: unknown bar:  (i3bar)\n"},
        {{"--plain=1"}, "quenchly-status: unknown option: --plain=1\n"},
        {{"--home", ""}, "quenchly-status: a folder's name is empty\n"},
        {{"--data-home=", "--json"}, "quenchly-status: a folder's name is empty\n"},
        {{"--launch-agents", ""}, "quenchly-status: a folder's name is empty\n"},
        {{"something"}, "quenchly-status: unexpected argument: something\n"},
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
    const ProgramRun help = runStatus({"--help"});
    EXPECT_EQ(help.exitStatus, 0);
    for (const char* option : {"--json", "--bar", "--bar=i3bar", "--plain", "--watch", "--no-live", "--home DIR",
                               "--data-home DIR", "--launch-agents DIR", "--now ISO", "--language CODE"})
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    EXPECT_EQ(runStatus({"--version"}).output, "quenchly-status " QUENCHLY_VERSION "\n");
}

TEST(StatusCommand, AStateThatCannotBeReadIsShownAsAnEmptyOneAsWhenTheApplicationStarts)
{
    const testing::ScratchFolder home;
    home.makeFifo("fifo/state/heat-state.json");
    home.writeSparse("large/state/heat-state.json", "{}", maxFileBytes + 1);
    home.write("agents/com.brindlemoor.quenchly.plist", "<plist/>");
    for (const char* data : {"fifo", "large"}) {
        const ProgramRun run = runStatus({"--data-home", home / data, "--launch-agents", home / "agents", "--bar"});
        EXPECT_EQ(nlohmann::json::parse(run.output)["class"], "stale") << data;
    }
}

constexpr const char* calm = R"({"lastCheck":"2026-03-01T11:59:30Z"})";
constexpr const char* overload = R"({"lastCheck":"2026-03-01T11:59:30Z","hot":true})";

/// `--watch` running on folders of its own, read line by line.
class Watch {
public:
    explicit Watch(const std::string& format)
    {
        folder_.write("agents/com.brindlemoor.quenchly.plist", "<plist/>");
        write(calm);
        QStringList words;
        for (const std::string& word : optionsFor(folder_.path()) + Words{"--no-live", format, "--watch"})
            words += QString::fromStdString(word);
        process_.start(QStringLiteral(QUENCHLY_STATUS_PATH), words);
    }
    Watch() : Watch("--bar") { EXPECT_EQ(nextClass(), "cool"); }
    ~Watch()
    {
        process_.kill();
        process_.waitForFinished(testing::patience);
    }

    void write(const char* state) const { folder_.replace(stateFile, state); }
    void remove() const { fs::remove(folder_ / stateFile); }
    /// Which cannot be read; at no moment the state is missing.
    void replaceByAFifo() const { fs::rename(folder_.makeFifo("state/fifo"), folder_ / stateFile); }
    void replaceByALargeFile() const
    {
        fs::rename(folder_.writeSparse("state/large", "{}", maxFileBytes + 1), folder_ / stateFile);
    }

    std::string nextLine()
    {
        while (!process_.canReadLine() && process_.waitForReadyRead(testing::patience)) {
        }
        return process_.readLine().toStdString();
    }
    /// The class of the next status that is printed.
    std::string nextClass() { return nlohmann::json::parse(nextLine())["class"]; }

private:
    static constexpr const char* stateFile = "state/heat-state.json";

    testing::ScratchFolder folder_;
    QProcess process_;
};

/// Lets the time of a look or two pass: another sees two changes of its own.
void awaitLooks()
{
    Watch another;
    another.write(overload);
    EXPECT_EQ(another.nextClass(), "hotWatch");
    another.write(calm);
    EXPECT_EQ(another.nextClass(), "cool");
}

TEST(StatusCommand, WatchPrintsOnlyWhatChanged)
{
    Watch watch;
    awaitLooks();
    watch.write(overload);
    EXPECT_EQ(watch.nextClass(), "hotWatch") << "the unchanged status was printed again";
    watch.remove();
    EXPECT_EQ(watch.nextClass(), "stale");
}

TEST(StatusCommand, WatchKeepsTheLastStatusWhileTheStateCannotBeReadOrIsTooLarge)
{
    Watch watch;
    watch.write(overload);
    EXPECT_EQ(watch.nextClass(), "hotWatch");
    watch.replaceByAFifo();
    awaitLooks();
    watch.replaceByALargeFile();
    awaitLooks();
    watch.write(calm);
    EXPECT_EQ(watch.nextClass(), "cool") << "something was printed meanwhile";
}

TEST(StatusCommand, WatchOfI3barIsAnArrayWithoutEnd)
{
    Watch watch("--bar=i3bar");
    std::string output;
    for (int i = 0; i < 3; ++i)
        output += watch.nextLine();
    watch.write(overload);
    output += watch.nextLine();
    watch.remove();
    output += watch.nextLine();
    expectI3bar(output + "]", {{{{"full_text", "On"}, {"color", "#4E93C6"}}},
                               {{{"full_text", "On"}, {"color", "#6B8FB5"}}},
                               {{{"full_text", "On  Checking in a moment."}}}});
}

/// Two ends of something, that of the watch first.
struct Ends {
    Descriptor written;
    Descriptor read;
};

Ends pipeEnds()
{
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(pipe(ends.data()), 0);
    return {.written = Descriptor(ends[1]), .read = Descriptor(ends[0])};
}

Ends socketEnds()
{
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    return {.written = Descriptor(ends[1]), .read = Descriptor(ends[0])};
}

/// The terminal controls no session, so that its end sends no signal.
Ends terminalEnds()
{
    Descriptor read(posix_openpt(O_RDWR | O_NOCTTY));
    EXPECT_EQ(grantpt(read.number()), 0);
    EXPECT_EQ(unlockpt(read.number()), 0);
    return {.written = Descriptor(open(ptsname(read.number()), O_RDWR | O_NOCTTY)), .read = std::move(read)};
}

void awaitALine(int descriptor)
{
    for (char c = '\0'; c != '\n';) {
        pollfd input{.fd = descriptor, .events = POLLIN, .revents = 0};
        ASSERT_EQ(poll(&input, 1, testing::patience), 1);
        ASSERT_EQ(read(descriptor, &c, 1), 1);
    }
}

/// The exit status; -1 after a time in which it should have ended.
int endOf(pid_t process)
{
    auto ended = std::async(std::launch::async, [process] { return exitStatusOf(process); });
    if (ended.wait_for(std::chrono::milliseconds(testing::patience)) != std::future_status::ready)
        kill(process, SIGKILL);
    return ended.get();
}

TEST(StatusCommand, WatchEndsWhenNobodyReadsItAlthoughNothingChanges)
{
    for (const auto& makeEnds : {pipeEnds, socketEnds, terminalEnds}) {
        Ends ends = makeEnds();
        const auto process =
            start({.executable = QUENCHLY_STATUS_PATH,
                   .arguments = optionsFor(situations() / "calm") + Words{"--no-live", "--bar", "--watch"},
                   .environment = environmentVariables()},
                  ends.written.number());
        ends.written.close();
        ASSERT_TRUE(process.has_value());
        awaitALine(ends.read.number());
        ends.read.close();
        ASSERT_EQ(endOf(*process), 0);
    }
}

}  // namespace
}  // namespace quenchly
