#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "spawning.h"
#include "test_files.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using quenchly::testing::contentOf;
using quenchly::testing::environmentWithoutOurs;
using quenchly::testing::pointersTo;
using quenchly::testing::ScratchFolder;
using quenchly::testing::Words;

const Words scenarioNames{"calm",          "overload",  "holding", "easing",         "false-heat",
                          "swap-critical", "set-aside", "stale",   "protection-off", "not-set-up"};
const char* const plistName = "com.brindlemoor.quenchly.plist";

json parsed(const fs::path& path)
{
    return json::parse(contentOf(path), nullptr, false);
}

std::time_t now()
{
    return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

std::time_t timeOf(const std::string& iso)
{
    std::tm parts{};
    std::istringstream(iso) >> std::get_time(&parts, "%Y-%m-%dT%H:%M:%S");
    return ::timegm(&parts);
}

/// That a time is `seconds` before something that was done since `begin`.
void expectBefore(const std::string& iso, std::time_t seconds, std::time_t begin)
{
    EXPECT_GE(timeOf(iso), begin - seconds) << iso;
    EXPECT_LE(timeOf(iso), now() - seconds) << iso;
}

std::string digitsAsZero(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c >= '0' && c <= '9'; }, '0');
    return text;
}

std::size_t lineCount(const std::string& text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

struct Result {
    int status;
    std::string output;
    std::string errors;
};

/// A running tool whose output goes to two files.
class Child {
public:
    Child(Words arguments, Words environment, const fs::path& outputStem)
        : output_(outputStem.string() + ".out"), errors_(outputStem.string() + ".err")
    {
        arguments.insert(arguments.begin(), QUENCHLY_DEMO_TOOL_PATH);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        const int flags = O_WRONLY | O_CREAT | O_TRUNC;
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output_.c_str(), flags, 0600);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors_.c_str(), flags, 0600);
        spawned_ = ::posix_spawn(&pid_, QUENCHLY_DEMO_TOOL_PATH, &actions, nullptr, pointersTo(arguments).data(),
                                 pointersTo(environment).data()) == 0;
        ::posix_spawn_file_actions_destroy(&actions);
    }

    Result finish()
    {
        int state = 0;
        if (!spawned_ || ::waitpid(pid_, &state, 0) != pid_ || !WIFEXITED(state))
            return {.status = -1, .output = {}, .errors = {}};
        return {.status = WEXITSTATUS(state), .output = contentOf(output_), .errors = contentOf(errors_)};
    }

private:
    fs::path output_;
    fs::path errors_;
    ::pid_t pid_ = 0;
    bool spawned_ = false;
};

class StandInChecker : public testing::Test {
protected:
    fs::path home() const { return scratch / "data" / "home"; }
    fs::path agents() const { return scratch / "data" / "agents"; }
    fs::path plist() const { return agents() / plistName; }
    fs::path heatFile() const { return stateFile("heat-state.json"); }
    fs::path stateFile(const std::string& name) const { return home() / "state" / name; }
    json heat() const { return parsed(heatFile()); }
    json list(const char* key) const { return heat().at(key); }
    void writeHeat(const json& state) const { scratch.write(heatFile(), state.dump()); }

    Child start(Words arguments) const
    {
        static std::atomic<int> count = 0;
        return {std::move(arguments), environment(), scratch / ("child-" + std::to_string(++count))};
    }

    Result run(Words arguments) const { return start(std::move(arguments)).finish(); }

    void succeed(Words arguments) const
    {
        const Result result = run(std::move(arguments));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "");
    }

    void expectRefusal(Words arguments, int status, const std::string& reason) const
    {
        const Result result = run(std::move(arguments));
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
        EXPECT_EQ(lineCount(result.errors), 1U) << result.errors;
    }

    /// Every file below the two folders, relative to their parent.
    std::set<std::string> files() const
    {
        std::set<std::string> names;
        if (fs::exists(scratch / "data"))
            for (const auto& entry : fs::recursive_directory_iterator(scratch / "data"))
                if (!entry.is_directory())
                    names.insert(entry.path().lexically_relative(scratch / "data").string());
        return names;
    }

    ScratchFolder scratch;
    std::map<std::string, std::string> variables{{"QUENCHLY_HOME", home().string()},
                                                 {"QUENCHLY_LAUNCH_AGENTS", agents().string()},
                                                 {"QUENCHLY_DEMO_LOG", ""},
                                                 {"HOME", (scratch / "user").string()}};

private:
    Words environment() const
    {
        Words result = environmentWithoutOurs();
        std::erase_if(result, [](const std::string& entry) { return entry.starts_with("HOME="); });
        for (const auto& [name, value] : variables)
            result.push_back(name + "=" + value);
        return result;
    }
};

const std::set<std::string> everyFile{"agents/com.brindlemoor.quenchly.plist", "home/state/heat-state.json",
                                      "home/state/managed.json", "home/state/protect-mode.json",
                                      "home/state/throttle.json"};

json heldState()
{
    return {{"lastCheck", "2025-03-02T10:15:00.120Z"},
            {"hot", true},
            {"coolStreak", 4},
            {"hotStreak", 7},
            {"lastHotAt", "2025-03-02T10:15:00.120Z"},
            {"lastCoolAt", "2025-03-02T10:05:00.120Z"},
            {"lastRestoreAt", "2025-03-02T09:00:00.000Z"},
            {"paused", {{{"label", "ollama"}, {"pid", 812}, {"pausedAt", "2025-03-02T10:10:00Z"}, {"reason", "load"}}}},
            {"quarantined",
             {{{"id", "a"}, {"kind", "process"}, {"cmd", "ollama serve"}, {"acknowledged", false}},
              {{"id", "b"}, {"kind", "launchd"}, {"cmd", "ai.lmstudio"}, {"acknowledged", false}}}},
            {"story", {{"text", "Of the check before"}, {"tone", "cool"}}},
            {"spectrumClass", "trend"},
            {"memoryReliefTip", "Unload something"},
            {"slowActive", true},
            {"lastMetrics", {{"load1", 1.5}, {"menubarLine", "of the check before"}}},
            {"fromANewerChecker", {{"kept", true}}}};
}

// Refusals

TEST_F(StandInChecker, RefusesWithoutTheDataFolder)
{
    for (const std::string value : {"unset", "empty"}) {
        variables.erase("QUENCHLY_HOME");
        if (value == "empty")
            variables["QUENCHLY_HOME"] = "";
        for (const Words& arguments : {Words{"check"},
                                       {"enable"},
                                       {"disable"},
                                       {"unload-listed"},
                                       {"quarantine", "ack", "a"},
                                       {"install-agent"},
                                       {"uninstall", "--yes"},
                                       {"serve"},
                                       {"scenario", "calm"}})
            expectRefusal(arguments, 2, "QUENCHLY_HOME is not set");
    }
    EXPECT_TRUE(files().empty());
    EXPECT_FALSE(fs::exists(scratch / "user"));
}

TEST_F(StandInChecker, RefusesWithoutTheLaunchAgentsFolder)
{
    succeed({"scenario", "calm"});
    variables.erase("QUENCHLY_LAUNCH_AGENTS");
    for (const Words& arguments :
         {Words{"install-agent"}, {"remove-agent"}, {"uninstall", "--yes"}, {"scenario", "stale"}})
        expectRefusal(arguments, 2, "QUENCHLY_LAUNCH_AGENTS is not set");
    EXPECT_EQ(files(), everyFile);
    EXPECT_FALSE(fs::exists(scratch / "user"));
}

TEST_F(StandInChecker, CommandsOnTheStateNeedNoLaunchAgentsFolder)
{
    variables.erase("QUENCHLY_LAUNCH_AGENTS");
    succeed({"check"});
    succeed({"disable"});
    succeed({"enable"});
    succeed({"unload-listed"});
}

TEST_F(StandInChecker, RefusesWhatItDoesNotKnow)
{
    expectRefusal({"explode"}, 2, "unknown command 'explode'");
    expectRefusal({""}, 2, "unknown command ''");
    expectRefusal({"Check"}, 2, "unknown command 'Check'");
    expectRefusal({}, 2, "no command");
    EXPECT_TRUE(files().empty());
}

TEST_F(StandInChecker, RefusesWrongArguments)
{
    expectRefusal({"check", "now"}, 2, "usage: quenchly check");
    expectRefusal({"quarantine"}, 2, "usage: quenchly quarantine ack ID");
    expectRefusal({"quarantine", "ack"}, 2, "usage: quenchly quarantine ack ID");
    expectRefusal({"quarantine", "drop", "a"}, 2, "usage: quenchly quarantine ack ID");
    expectRefusal({"scenario", "calm", "now"}, 2, "usage: quenchly scenario");
    expectRefusal({"scenario", "quiet"}, 2, "unknown scenario 'quiet'");
    EXPECT_TRUE(files().empty());
}

TEST_F(StandInChecker, UninstallsOnlyWhenToldYes)
{
    succeed({"scenario", "calm"});
    expectRefusal({"uninstall"}, 2, "usage: quenchly uninstall --yes");
    EXPECT_EQ(files(), everyFile);
}

TEST_F(StandInChecker, AFolderThatCannotBeWrittenIsReported)
{
    scratch.write(home(), "a file where the folder should be");
    expectRefusal({"check"}, 1, "cannot write " + heatFile().string());
    expectRefusal({"disable"}, 1, "cannot write");
    expectRefusal({"scenario", "calm"}, 1, "cannot write");
    EXPECT_EQ(contentOf(home()), "a file where the folder should be");
    EXPECT_EQ(files(), std::set<std::string>{"home"});
}

TEST_F(StandInChecker, AReadOnlyFolderIsReported)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is read-only to root";
    succeed({"scenario", "calm"});
    const std::string before = contentOf(heatFile());
    fs::permissions(home() / "state", fs::perms::owner_read | fs::perms::owner_exec);
    expectRefusal({"check"}, 1, "cannot write");
    expectRefusal({"uninstall", "--yes"}, 1, "cannot remove");
    fs::permissions(home() / "state", fs::perms::owner_all);
    EXPECT_EQ(contentOf(heatFile()), before);
}

TEST_F(StandInChecker, AFailedWriteLeavesNoTemporaryFile)
{
    fs::create_directories(heatFile());
    expectRefusal({"check"}, 1, "cannot write");
    EXPECT_TRUE(files().empty());
}

// Help and the list

TEST_F(StandInChecker, HelpNamesEveryCommandAndNeedsNoFolder)
{
    variables = {{"HOME", (scratch / "user").string()}};
    const Result result = run({"help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    for (const char* command :
         {"check", "enable", "disable", "unload-listed", "quarantine ack ID", "install-agent", "remove-agent",
          "uninstall --yes", "serve", "scenario NAME", "tour begin NAME", "tour NAME", "refresh", "help"})
        EXPECT_NE(result.output.find("quenchly " + std::string(command)), std::string::npos) << command;
}

TEST_F(StandInChecker, ListsTheScenariosOneALine)
{
    variables = {{"HOME", (scratch / "user").string()}};
    const Result result = run({"scenario"});
    EXPECT_EQ(result.status, 0);
    std::string expected;
    for (const std::string& name : scenarioNames)
        expected += name + "\n";
    EXPECT_EQ(result.output, expected);
    EXPECT_TRUE(files().empty());
}

TEST_F(StandInChecker, LogsTheArgumentsWhenAsked)
{
    variables["QUENCHLY_DEMO_LOG"] = (scratch / "log").string();
    run({"quarantine", "ack", "a \"b\"\n"});
    run({"explode"});
    run({});
    EXPECT_EQ(contentOf(scratch / "log"), "[\"quarantine\",\"ack\",\"a \\\"b\\\"\\n\"]\n[\"explode\"]\n[]\n");
}

TEST_F(StandInChecker, LogsArgumentsThatAreNotText)
{
    variables["QUENCHLY_DEMO_LOG"] = (scratch / "log").string();
    EXPECT_EQ(run({"\xff\xfe"}).status, 2);
    EXPECT_EQ(lineCount(contentOf(scratch / "log")), 1U);
}

TEST_F(StandInChecker, ALogThatCannotBeWrittenIsReported)
{
    variables["QUENCHLY_DEMO_LOG"] = (scratch / "missing" / "log").string();
    expectRefusal({"check"}, 1, "cannot write");
}

// Check

TEST_F(StandInChecker, CheckWritesTheMachinesState)
{
    const std::time_t begin = now();
    succeed({"check"});
    const json state = heat();
    const std::string time = state.at("lastCheck");
    EXPECT_EQ(digitsAsZero(time), "0000-00-00T00:00:00.000Z");
    expectBefore(time, 0, begin);
    EXPECT_EQ(state.at("updatedAt"), time);
    EXPECT_EQ(state.at("paused"), json::array());
    EXPECT_EQ(state.at("quarantined"), json::array());
    EXPECT_EQ(state.at("slowActive"), false);
    EXPECT_EQ(files(), std::set<std::string>{"home/state/heat-state.json"});
}

TEST_F(StandInChecker, CheckSamplesLoadAndSwap)
{
    succeed({"check"});
    const json metrics = heat().at("lastMetrics");
    const double load = metrics.at("load1");
    const int processors = metrics.at("cpuCount");
    EXPECT_GE(load, 0);
    EXPECT_EQ(processors, ::sysconf(_SC_NPROCESSORS_ONLN));
    EXPECT_EQ(metrics.at("cpuLoadPct"), std::min(100L, std::lround(load / processors * 100)));
    EXPECT_EQ(metrics.contains("swapPct"), metrics.contains("swapUsedMB"));
    EXPECT_EQ(metrics.at("swapCritical"), metrics.value("swapPct", 0.0) > 90);
    EXPECT_FALSE(metrics.contains("menubarLine"));
}

TEST_F(StandInChecker, CheckJudgesTheLoad)
{
    succeed({"check"});
    const json state = heat();
    const bool hot = state.at("lastMetrics").at("cpuLoadPct") >= 90;
    EXPECT_EQ(state.at("hot"), hot);
    EXPECT_EQ(state.at("thermalTruth"), hot ? "hot" : "cool");
    EXPECT_EQ(state.at(hot ? "hotStreak" : "coolStreak"), 1);
    EXPECT_EQ(state.at(hot ? "coolStreak" : "hotStreak"), 0);
    EXPECT_EQ(state.at(hot ? "lastHotAt" : "lastCoolAt"), state.at("lastCheck"));
    EXPECT_FALSE(state.contains(hot ? "lastCoolAt" : "lastHotAt"));
}

TEST_F(StandInChecker, CheckCountsTheStreaksOn)
{
    writeHeat(heldState());
    succeed({"check"});
    const json state = heat();
    const bool hot = state.at("hot");
    EXPECT_EQ(state.at("hotStreak"), hot ? 8 : 0);
    EXPECT_EQ(state.at("coolStreak"), hot ? 0 : 5);
    EXPECT_EQ(state.at("lastHotAt"), hot ? state.at("lastCheck") : heldState().at("lastHotAt"));
    EXPECT_EQ(state.at("lastCoolAt"), hot ? heldState().at("lastCoolAt") : state.at("lastCheck"));
}

TEST_F(StandInChecker, CheckKeepsWhatItDoesNotJudge)
{
    writeHeat(heldState());
    succeed({"check"});
    for (const char* key : {"paused", "quarantined", "slowActive", "lastRestoreAt", "fromANewerChecker"})
        EXPECT_EQ(heat().at(key), heldState().at(key)) << key;
}

TEST_F(StandInChecker, CheckDropsWhatToldOfTheSampleBefore)
{
    writeHeat(heldState());
    succeed({"check"});
    EXPECT_FALSE(heat().contains("story"));
    EXPECT_FALSE(heat().contains("spectrumClass"));
    EXPECT_FALSE(heat().at("lastMetrics").contains("menubarLine"));
    EXPECT_EQ(heat().contains("memoryReliefTip"), heat().at("lastMetrics").at("swapCritical"));
}

TEST_F(StandInChecker, CheckCountsFromOneAfterAnUnusableStreak)
{
    for (const json& streak : {json("12"), json(nullptr), json(-7), json(7.5), json::array({3})}) {
        writeHeat({{"hotStreak", streak}, {"coolStreak", streak}});
        succeed({"check"});
        EXPECT_EQ(heat().at(heat().at("hot") ? "hotStreak" : "coolStreak"), 1) << streak;
    }
}

TEST_F(StandInChecker, CheckNeverOverflowsAStreak)
{
    const auto most = std::numeric_limits<std::int64_t>::max();
    writeHeat({{"hotStreak", most}, {"coolStreak", most}});
    succeed({"check"});
    EXPECT_GT(heat().at(heat().at("hot") ? "hotStreak" : "coolStreak").get<std::int64_t>(), 0);
}

TEST_F(StandInChecker, CheckStartsAnewFromAnUnusableFile)
{
    for (const std::string text : {"", "{\"paused\": [", "null", "[]", "7", "\xff\xfe", "{} {}"}) {
        scratch.write(heatFile(), text);
        succeed({"check"});
        EXPECT_TRUE(heat().is_object()) << text;
        EXPECT_EQ(heat().at("paused"), json::array()) << text;
    }
}

// Protection

TEST_F(StandInChecker, DisableStampsTheTimeAndEnableTakesItAway)
{
    const std::time_t begin = now();
    succeed({"disable"});
    expectBefore(parsed(stateFile("managed.json")).at("disabledAt"), 0, begin);
    succeed({"enable"});
    EXPECT_EQ(parsed(stateFile("managed.json")), json::object());
}

TEST_F(StandInChecker, DisableAndUnloadLetEverythingGo)
{
    for (const char* command : {"disable", "unload-listed"}) {
        SCOPED_TRACE(command);
        writeHeat(heldState());
        scratch.write(stateFile("throttle.json"), R"({"level": 2, "targets": [{"label": "ollama"}]})");
        succeed({command});
        json expected = heldState();
        expected["paused"] = json::array();
        expected["slowActive"] = false;
        expected["updatedAt"] = heat().at("updatedAt");
        if (command == std::string("unload-listed"))
            expected.erase("memoryReliefTip");
        EXPECT_EQ(heat(), expected);
        EXPECT_EQ(parsed(stateFile("throttle.json")).at("level"), 0);
        EXPECT_EQ(parsed(stateFile("throttle.json")).at("targets"), json::array());
    }
}

TEST_F(StandInChecker, ProtectionKeepsOtherKeysAndOtherFiles)
{
    succeed({"scenario", "set-aside"});
    const json before = heat();
    scratch.write(stateFile("managed.json"), R"({"owner": "someone", "disabledAt": ""})");
    succeed({"disable"});
    EXPECT_EQ(parsed(stateFile("managed.json")).at("owner"), "someone");
    EXPECT_NE(parsed(stateFile("managed.json")).at("disabledAt"), "");
    succeed({"enable"});
    EXPECT_EQ(parsed(stateFile("managed.json")), json({{"owner", "someone"}}));
    json after = heat();
    after["updatedAt"] = before.at("updatedAt");
    EXPECT_EQ(after, before);
}

TEST_F(StandInChecker, ProtectionReplacesAnUnusableFile)
{
    scratch.write(stateFile("managed.json"), "{");
    succeed({"disable"});
    EXPECT_TRUE(parsed(stateFile("managed.json")).at("disabledAt").is_string());
    scratch.write(stateFile("managed.json"), "[1]");
    succeed({"enable"});
    EXPECT_EQ(parsed(stateFile("managed.json")), json::object());
}

// Unload

TEST_F(StandInChecker, UnloadInventsNoState)
{
    succeed({"unload-listed"});
    EXPECT_FALSE(fs::exists(heatFile()));
    scratch.write(heatFile(), "{");
    succeed({"unload-listed"});
    EXPECT_EQ(contentOf(heatFile()), "{");
}

// Acknowledge

TEST_F(StandInChecker, AcknowledgesOneEntry)
{
    writeHeat(heldState());
    succeed({"quarantine", "ack", "b"});
    json expected = heldState();
    expected["quarantined"][1]["acknowledged"] = true;
    expected["updatedAt"] = heat().at("updatedAt");
    EXPECT_EQ(heat(), expected);
    succeed({"quarantine", "ack", "b"});
}

TEST_F(StandInChecker, AnUnknownEntryIsAFailure)
{
    expectRefusal({"quarantine", "ack", "a"}, 1, "has the id 'a'");
    EXPECT_FALSE(fs::exists(home()));
    writeHeat(heldState());
    const std::string before = contentOf(heatFile());
    expectRefusal({"quarantine", "ack", "c"}, 1, "has the id 'c'");
    expectRefusal({"quarantine", "ack", ""}, 1, "has the id ''");
    EXPECT_EQ(contentOf(heatFile()), before);
}

TEST_F(StandInChecker, AcknowledgeLooksPastUnusableEntries)
{
    const json entries{7, "a", nullptr, json::array(), {{"kind", "process"}}, {{"id", 7}}, {{"id", "a"}}};
    writeHeat({{"quarantined", entries}});
    succeed({"quarantine", "ack", "a"});
    EXPECT_EQ(heat().at("quarantined").back(), json({{"id", "a"}, {"acknowledged", true}}));
    for (const json& unusable : {json("a"), json::object({{"id", "a"}}), json(nullptr)}) {
        writeHeat({{"quarantined", unusable}});
        expectRefusal({"quarantine", "ack", "a"}, 1, "has the id 'a'");
    }
}

TEST_F(StandInChecker, CommandsAtOnceLoseNothing)
{
    json entries = json::array();
    for (int i = 0; i < 12; ++i)
        entries.push_back({{"id", std::to_string(i)}, {"acknowledged", false}});
    writeHeat({{"quarantined", entries}});
    std::vector<Child> children;
    for (int i = 0; i < 12; ++i) {
        children.push_back(start({"quarantine", "ack", std::to_string(i)}));
        children.push_back(start({"check"}));
    }
    for (Child& child : children)
        EXPECT_EQ(child.finish().status, 0);
    for (const json& entry : list("quarantined"))
        EXPECT_EQ(entry.at("acknowledged"), true) << entry;
    EXPECT_EQ(heat().at("coolStreak").get<int>() + heat().at("hotStreak").get<int>(), 12);
}

// The launch agent

TEST_F(StandInChecker, InstallsTheLaunchAgent)
{
    succeed({"install-agent"});
    const std::string text = contentOf(plist());
    EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\""));
    EXPECT_NE(text.find("<string>com.brindlemoor.quenchly</string>"), std::string::npos);
    EXPECT_NE(text.find("<string>" + std::string(QUENCHLY_DEMO_TOOL_PATH) + "</string>"), std::string::npos) << text;
    EXPECT_NE(text.find("<string>" + home().string() + "</string>"), std::string::npos) << text;
    EXPECT_EQ(text.find("--dry-run"), std::string::npos);
    EXPECT_EQ(files(), std::set<std::string>{"agents/" + std::string(plistName)});
}

TEST_F(StandInChecker, TheLaunchAgentEscapesAwkwardFolders)
{
    variables["QUENCHLY_HOME"] = (scratch / "R&D <lab>").string();
    succeed({"install-agent"});
    EXPECT_NE(contentOf(plist()).find("R&amp;D &lt;lab&gt;"), std::string::npos);
}

TEST_F(StandInChecker, RemovesTheLaunchAgentOnly)
{
    succeed({"scenario", "calm"});
    scratch.write(agents() / "com.example.other.plist", "other");
    variables.erase("QUENCHLY_HOME");
    succeed({"remove-agent"});
    EXPECT_FALSE(fs::exists(plist()));
    EXPECT_TRUE(fs::exists(agents() / "com.example.other.plist"));
    EXPECT_TRUE(fs::exists(heatFile()));
    succeed({"remove-agent"});
}

TEST_F(StandInChecker, UninstallRemovesItsOwnFilesOnly)
{
    succeed({"scenario", "holding"});
    scratch.write(home() / "notes.txt", "mine");
    scratch.write(stateFile("other.json"), "{}");
    succeed({"uninstall", "--yes"});
    EXPECT_EQ(files(), (std::set<std::string>{"home/notes.txt", "home/state/other.json"}));
    succeed({"uninstall", "--yes"});
}

TEST_F(StandInChecker, UninstallRefusesAHomeFolderAndSaysWhy)
{
    succeed({"scenario", "calm"});
    const auto before = files();
    variables["HOME"] = (home() / "user").string();
    expectRefusal({"uninstall", "--yes"}, 1,
                  "refused to remove " + home().string() + ": it is a home folder or holds one");
    EXPECT_EQ(files(), before);
}

// Files

TEST_F(StandInChecker, AReaderNeverSeesAPartOfAFile)
{
    succeed({"scenario", "calm"});
    std::atomic<bool> done = false;
    std::atomic<bool> hasSeenBoth = false;
    std::thread writer([&] {
        for (int i = 0; i < 200 || !hasSeenBoth; ++i)
            EXPECT_EQ(run({"scenario", i % 2 == 0 ? "set-aside" : "calm"}).status, 0);
        done = true;
    });
    std::set<std::size_t> setAsideCounts;
    while (!done)
        for (const char* name : {"heat-state.json", "managed.json", "protect-mode.json", "throttle.json"}) {
            const json value = parsed(stateFile(name));
            EXPECT_TRUE(value.is_object()) << name;
            if (value.contains("quarantined"))
                setAsideCounts.insert(value.at("quarantined").size());
            hasSeenBoth = setAsideCounts.size() >= 2;
        }
    writer.join();
    EXPECT_EQ(setAsideCounts, (std::set<std::size_t>{0, 4}));
    EXPECT_EQ(files(), everyFile);
}

TEST_F(StandInChecker, ALinkIsReplacedAndNotWrittenThrough)
{
    scratch.write(scratch / "elsewhere.json", "untouched");
    fs::create_directories(home() / "state");
    fs::create_symlink(scratch / "elsewhere.json", heatFile());
    succeed({"check"});
    EXPECT_EQ(contentOf(scratch / "elsewhere.json"), "untouched");
    EXPECT_FALSE(fs::is_symlink(heatFile()));
}

TEST_F(StandInChecker, TouchesNoProcess)
{
    const ::pid_t held = ::fork();
    if (held == 0)
        for (;;)
            ::pause();
    ::kill(held, SIGSTOP);
    ASSERT_EQ(::waitpid(held, nullptr, WUNTRACED), held);
    succeed({"scenario", "holding"});
    json state = heat();
    state["paused"][0]["pid"] = held;
    writeHeat(state);
    succeed({"check"});
    succeed({"unload-listed"});
    EXPECT_EQ(::waitpid(held, nullptr, WNOHANG | WUNTRACED | WCONTINUED), 0) << "a signal has reached it";
    ::kill(held, SIGKILL);
    ::waitpid(held, nullptr, 0);
}

// Tours

TEST_F(StandInChecker, ATourGoesFromSituationToSituation)
{
    succeed({"tour", "begin", "holding"});
    EXPECT_EQ(heat().at("paused").size(), 2U);
    succeed({"tour", "not-set-up"});
    EXPECT_FALSE(fs::exists(plist()));
    succeed({"refresh"});
    succeed({"tour", "set-aside"});
    EXPECT_EQ(heat().at("quarantined").size(), 4U);
    EXPECT_TRUE(fs::exists(plist()));
}

TEST_F(StandInChecker, WhatAnybodyChangesEndsATourAndStands)
{
    for (const Words& change : {Words{"check"},
                                {"enable"},
                                {"disable"},
                                {"unload-listed"},
                                {"quarantine", "ack", "ollama-serve"},
                                {"install-agent"},
                                {"remove-agent"},
                                {"scenario", "calm"}}) {
        succeed({"tour", "begin", "set-aside"});
        succeed(change);
        const json state = heat();
        const json managed = parsed(stateFile("managed.json"));
        const bool installed = fs::exists(plist());
        const Result next = run({"tour", "holding"});
        EXPECT_EQ(next.status, 0);
        EXPECT_EQ(next.output, "the tour is over\n") << change.front();
        json after = heat();
        if (installed) {
            EXPECT_GT(after.at("lastCheck"), state.at("lastCheck")) << change.front();
        }
        for (const char* time : {"lastCheck", "lastHotAt", "lastCoolAt", "updatedAt"})
            if (state.contains(time))
                after[time] = state.at(time);
        EXPECT_EQ(after, state) << change.front();
        EXPECT_EQ(parsed(stateFile("managed.json")), managed) << change.front();
        EXPECT_EQ(fs::exists(plist()), installed) << change.front();
    }
}

TEST_F(StandInChecker, ALookDoesNotEndATour)
{
    succeed({"tour", "begin", "calm"});
    run({"help"});
    run({"scenario"});
    run({"explode"});
    succeed({"tour", "holding"});
    EXPECT_EQ(heat().at("paused").size(), 2U);
}

TEST_F(StandInChecker, ATourThatRunsWhileSomebodyActsNeverUndoesIt)
{
    for (int i = 0; i < 40; ++i) {
        succeed({"tour", "begin", "calm"});
        Child tour = start({"tour", "overload"});
        succeed({"disable"});
        EXPECT_EQ(tour.finish().status, 0);
        EXPECT_TRUE(parsed(stateFile("managed.json")).contains("disabledAt"));
    }
}

TEST_F(StandInChecker, ATourLeavesNothingBehindAnUninstall)
{
    succeed({"tour", "begin", "calm"});
    succeed({"uninstall", "--yes"});
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(run({"tour", "holding"}).output, "the tour is over\n");
    EXPECT_TRUE(files().empty());
}

TEST_F(StandInChecker, AnUnknownSituationBeginsNoTour)
{
    expectRefusal({"tour", "begin", "quiet"}, 2, "unknown scenario 'quiet'");
    expectRefusal({"tour"}, 2, "usage: quenchly tour");
    EXPECT_TRUE(files().empty());
}

// Refresh

TEST_F(StandInChecker, RefreshRenewsTheTimesOnly)
{
    writeHeat(heldState());
    succeed({"install-agent"});
    const std::time_t begin = now();
    succeed({"refresh"});
    json expected = heldState();
    const std::string time = heat().at("lastCheck");
    expectBefore(time, 0, begin);
    for (const char* renewed : {"lastCheck", "lastHotAt", "updatedAt"})
        expected[renewed] = time;
    EXPECT_EQ(heat(), expected);
}

TEST_F(StandInChecker, NothingIsRefreshedWhereNoCheckWouldRun)
{
    writeHeat(heldState());
    succeed({"refresh"});
    EXPECT_EQ(heat(), heldState());
    fs::remove(heatFile());
    succeed({"install-agent"});
    succeed({"refresh"});
    EXPECT_FALSE(fs::exists(heatFile()));
}

// Scenarios

class EveryScenario : public StandInChecker, public testing::WithParamInterface<std::string> {
protected:
    bool is(const std::string& name) const { return GetParam() == name; }
    bool holds() const { return is("holding") || is("swap-critical"); }
};

TEST_P(EveryScenario, WritesACompleteSetOfFiles)
{
    succeed({"scenario", GetParam()});
    std::set<std::string> expected = everyFile;
    if (is("not-set-up"))
        expected.erase("agents/" + std::string(plistName));
    EXPECT_EQ(files(), expected);
    EXPECT_FALSE(fs::exists(scratch / "user"));
}

TEST_P(EveryScenario, ReplacesTheScenarioBefore)
{
    for (const std::string& before : scenarioNames) {
        succeed({"scenario", before});
        succeed({"scenario", GetParam()});
        EXPECT_EQ(fs::exists(plist()), !is("not-set-up")) << before;
        EXPECT_EQ(parsed(stateFile("managed.json")).contains("disabledAt"), is("protection-off")) << before;
        EXPECT_EQ(heat().at("paused").empty(), !holds()) << before;
    }
}

TEST_P(EveryScenario, IsFreshUnlessItIsTheStaleOne)
{
    const std::time_t begin = now();
    succeed({"scenario", GetParam()});
    expectBefore(heat().at("lastCheck"), is("stale") ? 360 : 0, begin);
    EXPECT_EQ(heat().at("updatedAt"), heat().at("lastCheck"));
}

TEST_P(EveryScenario, SwitchesProtectionOffInOneOnly)
{
    succeed({"scenario", GetParam()});
    const json managed = parsed(stateFile("managed.json"));
    EXPECT_EQ(managed.contains("disabledAt"), is("protection-off"));
    if (is("protection-off")) {
        EXPECT_LT(timeOf(managed.at("disabledAt")), now() - 60);
    }
}

TEST_P(EveryScenario, PausesWhereItHolds)
{
    succeed({"scenario", GetParam()});
    EXPECT_EQ(parsed(stateFile("protect-mode.json")), json({{"mode", holds() ? "pause" : "off"}}));
    EXPECT_EQ(heat().at("paused").empty(), !holds());
    for (const json& target : list("paused")) {
        EXPECT_GT(target.at("pid"), 1);
        EXPECT_FALSE(target.at("reason").get<std::string>().empty());
        EXPECT_LT(timeOf(target.at("pausedAt")), now() - 60);
    }
}

TEST_P(EveryScenario, SlowsInOneOnly)
{
    succeed({"scenario", GetParam()});
    const json throttle = parsed(stateFile("throttle.json"));
    EXPECT_EQ(throttle.at("level"), is("easing") ? 1 : 0);
    EXPECT_EQ(throttle.at("dryRun"), false);
    EXPECT_EQ(throttle.at("targets").empty(), !is("easing"));
    EXPECT_EQ(heat().at("slowActive"), is("easing"));
}

TEST_P(EveryScenario, JudgesItsOwnFiguresAsTheCheckDoes)
{
    succeed({"scenario", GetParam()});
    const json state = heat();
    const json metrics = state.at("lastMetrics");
    EXPECT_EQ(metrics.at("cpuCount"), 8);
    EXPECT_EQ(metrics.at("cpuLoadPct"), std::min(100L, std::lround(metrics.at("load1").get<double>() / 8 * 100)));
    EXPECT_EQ(state.at("hot"), metrics.at("cpuLoadPct") >= 90);
    EXPECT_EQ(metrics.at("swapCritical"), metrics.at("swapPct") > 90);
    EXPECT_EQ(state.at("hot"), state.at("hotStreak") > 0);
    EXPECT_EQ(state.at("hot"), state.at("coolStreak") == 0);
    EXPECT_EQ(state.at(state.at("hot") ? "lastHotAt" : "lastCoolAt"), state.at("lastCheck"));
}

TEST_P(EveryScenario, CarriesATipOnlyWhereSwapIsCritical)
{
    succeed({"scenario", GetParam()});
    EXPECT_EQ(heat().contains("memoryReliefTip"), is("swap-critical"));
    EXPECT_EQ(heat().at("lastMetrics").contains("menubarLine"), is("overload"));
}

TEST_P(EveryScenario, IsAStateThatTheOtherCommandsCarryOn)
{
    succeed({"scenario", GetParam()});
    const json before = heat();
    succeed({"check"});
    EXPECT_EQ(heat().at("paused"), before.at("paused"));
    EXPECT_EQ(heat().at("quarantined"), before.at("quarantined"));
    EXPECT_EQ(heat().at("slowActive"), before.at("slowActive"));
}

INSTANTIATE_TEST_SUITE_P(All, EveryScenario, testing::ValuesIn(scenarioNames), [](const auto& scenario) {
    std::string name = scenario.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

TEST_F(StandInChecker, HoldingHoldsTwoTargets)
{
    succeed({"scenario", "holding"});
    ASSERT_EQ(heat().at("paused").size(), 2U);
    EXPECT_EQ(heat().at("paused")[0].at("label"), "ollama");
    EXPECT_EQ(heat().at("paused")[1].at("label"), "mlx");
    EXPECT_EQ(heat().at("lastMetrics").at("cpuLoadPct"), 94);
    EXPECT_NEAR(heat().at("lastMetrics").at("swapPct"), 76, 0.5);
}

TEST_F(StandInChecker, EasingNamesWhatItSlows)
{
    succeed({"scenario", "easing"});
    const json targets = parsed(stateFile("throttle.json")).at("targets");
    ASSERT_EQ(targets.size(), 2U);
    EXPECT_EQ(targets[0].at("label"), "ollama");
    EXPECT_EQ(targets[1].at("label"), "llama-server");
}

TEST_F(StandInChecker, FalseHeatIsMemoryPressure)
{
    succeed({"scenario", "false-heat"});
    EXPECT_EQ(heat().at("thermalTruth"), "false-heat");
    EXPECT_EQ(heat().at("hot"), false);
    EXPECT_GT(heat().at("lastMetrics").at("swapUsedMB"), 0);
    EXPECT_FALSE(heat().at("story").at("text").get<std::string>().empty());
    EXPECT_EQ(heat().at("story").at("tone"), "watch");
}

TEST_F(StandInChecker, SwapCriticalIsHeldAtNinetyFivePercent)
{
    succeed({"scenario", "swap-critical"});
    EXPECT_NEAR(heat().at("lastMetrics").at("swapPct"), 95, 0.5);
    EXPECT_EQ(heat().at("paused").size(), 1U);
}

TEST_F(StandInChecker, TheTipIsEnglishWhateverLanguageThePersonSpeaks)
{
    for (const char* name : {"LANG", "LC_ALL", "LANGUAGE"})
        variables[name] = "ja_JP.UTF-8";
    succeed({"scenario", "swap-critical"});
    EXPECT_EQ(heat().at("memoryReliefTip"),
              "Extra memory on disk is high while listed AI still has models loaded. Consider Unload listed AI to free "
              "RAM before swap grows further. This does not quit apps or change Protection settings.");
}

TEST_F(StandInChecker, SetAsideShowsThreeEntriesOfSeveralAges)
{
    const std::time_t begin = now();
    succeed({"scenario", "set-aside"});
    const json entries = heat().at("quarantined");
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[0].at("cmd"), "/usr/local/bin/mlx_lm.server --port 8080");
    expectBefore(entries[0].at("quarantinedAt"), 300, begin);
    EXPECT_EQ(entries[2].at("kind"), "launchd");
    expectBefore(entries[2].at("quarantinedAt"), 7200, begin);
    std::set<std::string> ids;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].at("acknowledged"), i == 3);
        ids.insert(entries[i].at("id"));
    }
    EXPECT_EQ(ids.size(), entries.size());
}

TEST_F(StandInChecker, EverySetAsideEntryCanBeAcknowledged)
{
    succeed({"scenario", "set-aside"});
    for (const json& entry : list("quarantined"))
        succeed({"quarantine", "ack", entry.at("id")});
    for (const json& entry : list("quarantined"))
        EXPECT_EQ(entry.at("acknowledged"), true);
}

}  // namespace
