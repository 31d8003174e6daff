#include "checker_contract.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "command_runner.h"
#include "dashboard.h"
#include "file_reading.h"
#include "heat_state.h"
#include "listed_targets.h"
#include "observe_only.h"
#include "recorded_tool.h"
#include "scripted_server.h"
#include "scripted_system.h"
#include "state_watcher.h"
#include "text.h"

namespace quenchly {
namespace {

using nlohmann::json;
using testing::ScriptedServer;
using Names = std::set<std::string>;

std::string document()
{
    std::ostringstream text;
    text << std::ifstream(QUENCHLY_CONTRACT, std::ios::binary).rdbuf();
    return text.str();
}

/// The text below a heading, down to the next one.
std::string section(const std::string& heading)
{
    const std::string text = document();
    const auto start = text.find("\n" + heading + "\n");
    return start == std::string::npos ? std::string() : text.substr(start, text.find("\n#", start + 1) - start);
}

/// What stands as code at the beginning of the rows of tables.
Names namesOfRows(const std::string& text)
{
    static const std::regex row("\n\\| `([^`]+)` \\|");
    Names names;
    for (std::sregex_iterator match(text.begin(), text.end(), row), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

/// An object in a state file: the object itself, or one that a key of it leads to, alone or in a list.
struct Place {
    std::string_view file;
    const char* under;  ///< null: the whole file
    bool inList = false;
    const char* content;  ///< such that no other key is needed for one to matter

    std::string heading() const
    {
        return "### `" + std::string(file) + "`" + (under == nullptr ? "" : ": `" + std::string(under) + "`");
    }

    json fileWith(const json& object) const
    {
        if (under == nullptr)
            return object;
        return {{under, inList ? json::array({object}) : object}};
    }
};

const Place places[] = {
    {CheckerContract::heatStateFile, nullptr, false, "{}"},
    {CheckerContract::heatStateFile, "paused", true, R"({"label": "a"})"},
    {CheckerContract::heatStateFile, "quarantined", true, R"({"id": "a"})"},
    {CheckerContract::heatStateFile, "story", false, R"({"text": "a"})"},
    {CheckerContract::heatStateFile, "lastMetrics", false, R"({"load1": 1.0})"},
    {CheckerContract::managedFile, nullptr, false, "{}"},
    {CheckerContract::protectModeFile, nullptr, false, "{}"},
    {CheckerContract::throttleFile, nullptr, false, R"({"level": 1})"},
    {CheckerContract::throttleFile, "targets", true, R"({"label": "a"})"},
};

/// Each key of the contract takes at least one of these, and none of them is its default.
const json values = json::parse(R"([
    true, 7, "7", "some text", "pause", "protect", "loop",
    [{"label": "x", "id": "x"}], {"text": "x"}, {"load1": 3}
])");

/// All that is ever read of the state files.
class Reader {
public:
    Reader() : watcher_(world_.system()) {}

    using Everything = std::tuple<std::optional<HeatState>, bool, bool, bool, std::set<Text>>;
    Everything with(std::string_view file, const json& content)
    {
        world_.writeState(std::string(file), content.dump());
        watcher_.reload();
        Everything everything{HeatState::parse(readFile(watcher_.stateFileURL()).bytes),
                              ObserveOnly::isManagementDisabled(watcher_.dataHome()), watcher_.workSavedOn(),
                              watcher_.throttleActive(), watcher_.throttledLabels()};
        world_.writeState(std::string(file), "{}");
        return everything;
    }

    Names keysThatMatter(const Place& place)
    {
        const json object = json::parse(place.content);
        const Everything without = with(place.file, place.fileWith(object));
        Names found;
        for (const std::string_view key : CheckerContract::keys)
            if (std::ranges::any_of(values, [&](const json& value) {
                    json changed = object;
                    changed[std::string(key)] = value;
                    return with(place.file, place.fileWith(changed)) != without;
                }))
                found.insert(std::string(key));
        return found;
    }

private:
    testing::ScriptedSystem world_;
    StateWatcher watcher_;
};

TEST(ContractDocument, HasEachKeyThatIsReadInEachObjectAndNoOther)
{
    Reader reader;
    Names all;
    for (const Place& place : places) {
        const Names documented = namesOfRows(section(place.heading()));
        EXPECT_EQ(documented, reader.keysThatMatter(place)) << place.heading();
        all.insert(documented.begin(), documented.end());
    }
    EXPECT_EQ(all, Names(CheckerContract::keys.begin(), CheckerContract::keys.end()));
}

TEST(ContractDocument, HasASectionForEachObjectAndNoOther)
{
    Names expected;
    for (const Place& place : places)
        expected.insert(place.heading());
    const std::string text = document();
    static const std::regex heading("\n(### `[^\n]*)");
    Names found;
    for (std::sregex_iterator match(text.begin(), text.end(), heading), end; match != end; ++match)
        found.insert((*match)[1]);
    EXPECT_EQ(found, expected);
}

const CLIRunner aRunner{.cli = "/tool/quenchly",
                        .dataHome = "/data",
                        .homeFolder = "/home",
                        .inheritedEnvironment = {{"PATH", "/bin"}, {"QUENCHLY_HOME", "/"}, {"OTHER", "kept"}}};

TEST(ContractDocument, HasEachCommandAndEachVariableAndNoOther)
{
    Names expected(rawValues<ToolCommand>.begin(), rawValues<ToolCommand>.end());
    for (const auto& [name, value] : aRunner.environment())
        if (aRunner.inheritedEnvironment.at(name) != value)
            expected.insert(name);
    EXPECT_EQ(namesOfRows(section("## The commands")), expected);
}

/// What each command becomes for an entry with the id "one".
std::set<CLIRunner::Arguments> argumentsOfAllCommands()
{
    std::set<CLIRunner::Arguments> all;
    for (const std::string_view command : rawValues<ToolCommand>)
        all.insert(ToolRun(*fromRawValue<ToolCommand>(command), "one").arguments());
    return all;
}

TEST(Contract, EveryCommandIsRunBySomeAction)
{
    testing::ScriptedSystem world;
    const testing::RecordedTool tool(world.scratch);
    const auto serves = [&] { return !tool.runs().empty() && tool.runs().back().front() == "serve"; };
    const ScriptedServer server([&](ScriptedServer::Connection& connection) {
        connection.request();
        connection.send(ScriptedServer::response(serves() ? CheckerContract::heatStateFile : "starting"));
    });
    world.scratch.makeLink("program/quenchly", testing::RecordedTool::program());
    System system = world.system();
    system.environment = tool.environment();
    system.dashboardPort = server.port();
    StateWatcher watcher(system);
    const std::function<void()> actions[] = {
        [&] { watcher.setProtect(true); },
        [&] { watcher.setProtect(false); },
        [&] { watcher.installAgent(); },
        [&] { watcher.unloadListed(); },
        [&] { watcher.acknowledgeQuarantine("one"); },
    };
    for (const auto& action : actions) {
        action();
        ASSERT_TRUE(testing::eventually([&] {
            QCoreApplication::sendPostedEvents();
            return !watcher.protectBusy() && !watcher.ackBusy();
        }));
    }
    EXPECT_TRUE(watcher.runLiveData());
    world.desktop.answers = {0, 1, 0};  // uninstall, remove the saved data, move to the Trash
    watcher.uninstallQuenchly();
    const auto runs = tool.runs();
    EXPECT_EQ(std::set<CLIRunner::Arguments>(runs.begin(), runs.end()), argumentsOfAllCommands());
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
}

TEST(ContractDocument, NamesTheAgentTheAddressAndWhatTheAnswerHas)
{
    const auto has = [text = document()](const std::string& part) { return text.find(part) != std::string::npos; };
    EXPECT_TRUE(has("`Library/LaunchAgents/" + std::string(CheckerContract::agentFile) + "`"));
    EXPECT_TRUE(has("`" + std::string(CheckerContract::agentLabel) + "` is the job's name"));
    EXPECT_TRUE(has("`" + dashboardAddress(CheckerContract::dashboardPort) + "` is opened"));
    EXPECT_TRUE(has("that have `" + std::string(CheckerContract::heatStateFile) + "` in them"));
    EXPECT_TRUE(has("`" + std::string(CheckerContract::dataFolderVariable) + "` names"));
}

std::string listed(const auto& names)
{
    std::string text;
    for (const std::string_view name : names)
        text += (text.empty() ? "`" : ", `") + std::string(name) + "`";
    return text.empty() ? "is never set aside" : text;
}

TEST(ContractDocument, HasTheTargets)
{
    const std::string text = section("### The targets");
    for (const ListedTargets::Target& target : ListedTargets::all) {
        std::vector<std::string_view> keys;
        std::ranges::transform(target.keys, std::back_inserter(keys), &ListedTargets::Key::key);
        const auto begin = text.find("\n| " + std::string(target.displayName) + " | " + listed(keys) + " | ");
        ASSERT_NE(begin, std::string::npos) << target.displayName;
        const std::string row = text.substr(begin + 1, text.find('\n', begin + 1) - begin - 1);
        EXPECT_TRUE(row.ends_with(" | " + listed(target.inCommand) + " | " + listed(target.inLaunchdLabel) + " |"))
            << row;
        for (const ListedTargets::Key& key : target.keys)
            EXPECT_NE(row.find("`" + std::string(key.pattern) + "`"), std::string::npos) << row;
    }
    const auto rows = static_cast<std::size_t>(std::ranges::count(replacingAll(text, "\n|", "\r"), '\r'));
    EXPECT_EQ(rows, 2 + ListedTargets::all.size()) << "heading and line above them";
}

}  // namespace
}  // namespace quenchly
