#include "commands.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>

#include "check.h"
#include "current_instant.h"
#include "file_changes.h"
#include "file_reading.h"
#include "folder_removal.h"
#include "launch_agent.h"
#include "live_sample.h"
#include "relative_time.h"
#include "scenarios.h"
#include "serve.h"
#include "state_files.h"

namespace quenchly::demo {
namespace {

using RelativeTime::isoText;

constexpr int failed = 1;
constexpr int misused = 2;

struct Invocation {
    std::filesystem::path dataHome;
    std::filesystem::path launchAgents;
    std::filesystem::path home;
    std::string tool;
    std::string operand;
    Instant now;
};

Outcome applied(const FileChanges& changes)
{
    if (const auto failure = apply(changes))
        return {.status = failed, .text = *failure};
    return {};
}

Outcome check(const Invocation& invocation)
{
    const std::optional<LastMetrics> sample = LiveMetricsSampler::sample(false);
    if (!sample)
        return {.status = failed, .text = "cannot read the load average"};
    const std::filesystem::path path = StateFiles(invocation.dataHome).heatState();
    const Json previous = readObject(path).value_or(Json::object());
    return applied({.writes = {storing(checkedState(previous, *sample, invocation.now), path)}});
}

Outcome enable(const Invocation& invocation)
{
    const std::filesystem::path path = StateFiles(invocation.dataHome).managed();
    Json managed = readObject(path).value_or(Json::object());
    managed.erase("disabledAt");
    return applied({.writes = {storing(managed, path)}});
}

/// Lets everything run again that is held or slowed; invents no state where there is none.
FileChanges letGo(const StateFiles& files, Instant now, bool withTip)
{
    FileChanges changes{.writes = {storing(idleThrottle(), files.throttle())}};
    if (std::optional<Json> state = readObject(files.heatState())) {
        (*state)["paused"] = Json::array();
        (*state)["slowActive"] = false;
        (*state)["updatedAt"] = isoText(now);
        if (withTip)
            state->erase("memoryReliefTip");
        changes.writes.push_back(storing(*state, files.heatState()));
    }
    return changes;
}

Outcome disable(const Invocation& invocation)
{
    const StateFiles files(invocation.dataHome);
    Json managed = readObject(files.managed()).value_or(Json::object());
    managed["disabledAt"] = isoText(invocation.now);
    FileChanges changes = letGo(files, invocation.now, false);
    changes.writes.push_back(storing(managed, files.managed()));
    return applied(changes);
}

Outcome unloadListed(const Invocation& invocation)
{
    return applied(letGo(StateFiles(invocation.dataHome), invocation.now, true));
}

bool isEntry(const Json& entry, const std::string& id)
{
    return entry.is_object() && entry.contains("id") && entry["id"] == id;
}

bool acknowledge(Json& state, const std::string& id)
{
    const auto entries = state.find("quarantined");
    if (entries == state.end() || !entries->is_array())
        return false;
    bool found = false;
    for (Json& entry : *entries)
        if (isEntry(entry, id)) {
            entry["acknowledged"] = true;
            found = true;
        }
    return found;
}

Outcome acknowledgeSetAside(const Invocation& invocation)
{
    const std::filesystem::path path = StateFiles(invocation.dataHome).heatState();
    std::optional<Json> state = readObject(path);
    if (!state || !acknowledge(*state, invocation.operand))
        return {.status = failed, .text = "nothing set aside has the id '" + invocation.operand + "'"};
    (*state)["updatedAt"] = isoText(invocation.now);
    return applied({.writes = {storing(*state, path)}});
}

Outcome installAgent(const Invocation& invocation)
{
    return applied({.writes = {launchAgent(invocation.launchAgents, invocation.tool, invocation.dataHome)}});
}

Outcome removeAgent(const Invocation& invocation)
{
    return applied({.removals = {launchAgentPath(invocation.launchAgents)}});
}

Outcome uninstall(const Invocation& invocation)
{
    if (const auto refusal = refusalToRemove(invocation.dataHome, invocation.home))
        return {.status = failed,
                .text = "refused to remove " + invocation.dataHome.string() + ": " + std::string(reason(*refusal))};
    const StateFiles files(invocation.dataHome);
    return applied({.removals = {launchAgentPath(invocation.launchAgents), files.heatState(), files.managed(),
                                 files.protectMode(), files.throttle(), files.tour()}});
}

Outcome listScenarios(const Invocation&)
{
    Outcome outcome;
    for (const std::string_view name : scenarioNames())
        outcome.text.append(name).append("\n");
    return outcome;
}

std::optional<FileChanges> scenarioChanges(const Invocation& invocation)
{
    return scenario(invocation.operand, {.dataHome = invocation.dataHome,
                                         .launchAgents = invocation.launchAgents,
                                         .tool = invocation.tool,
                                         .now = invocation.now});
}

Outcome unknownScenario(const Invocation& invocation)
{
    return {.status = misused, .text = "unknown scenario '" + invocation.operand + "'"};
}

Outcome playScenario(const Invocation& invocation)
{
    const auto changes = scenarioChanges(invocation);
    return changes ? applied(*changes) : unknownScenario(invocation);
}

Outcome beginTour(const Invocation& invocation)
{
    std::optional<FileChanges> changes = scenarioChanges(invocation);
    if (!changes)
        return unknownScenario(invocation);
    changes->writes.push_back(storing(Json::object(), StateFiles(invocation.dataHome).tour()));
    return applied(*changes);
}

Outcome refresh(const Invocation& invocation)
{
    const std::filesystem::path path = StateFiles(invocation.dataHome).heatState();
    const std::optional<Json> state = readObject(path);
    if (!state || !fileExists(launchAgentPath(invocation.launchAgents)))
        return {};
    return applied({.writes = {storing(renewedState(*state, invocation.now), path)}});
}

Outcome goOnWithTour(const Invocation& invocation)
{
    if (fileExists(StateFiles(invocation.dataHome).tour()))
        return playScenario(invocation);
    Outcome outcome = refresh(invocation);
    if (outcome.status == 0)
        outcome.text = "the tour is over\n";
    return outcome;
}

Outcome showDashboard(const Invocation& invocation)
{
    return serve(StateFiles(invocation.dataHome));
}

Outcome help(const Invocation&);

struct Folders {
    bool dataHome = false;
    bool launchAgents = false;
};

enum class Effect {
    reads,
    plays,    ///< changes the state as a tour does by itself
    changes,  ///< changes the state as a person asks, which ends a tour
};

struct Command {
    std::string_view usage;  // words as they are typed; a word in capitals stands for the operand
    std::string summary;
    Effect effect;
    Folders needs;
    Outcome (*run)(const Invocation&);
};

constexpr Folders none;
constexpr Folders data{.dataHome = true};
constexpr Folders agents{.launchAgents = true};
constexpr Folders both{.dataHome = true, .launchAgents = true};

const std::array<Command, 15> commands{{
    {"check", "sample load and swap and judge them", Effect::changes, data, check},
    {"enable", "switch Protection on", Effect::changes, data, enable},
    {"disable", "switch Protection off", Effect::changes, data, disable},
    {"unload-listed", "let go of everything held or slowed", Effect::changes, data, unloadListed},
    {"quarantine ack ID", "acknowledge what was set aside", Effect::changes, data, acknowledgeSetAside},
    {"install-agent", "install the launch agent", Effect::changes, both, installAgent},
    {"remove-agent", "remove the launch agent", Effect::changes, agents, removeAgent},
    {"uninstall --yes", "remove the state and the launch agent", Effect::changes, both, uninstall},
    {"serve", "show the state in a browser, at " + dashboardAddress(), Effect::reads, data, showDashboard},
    {"scenario", "list the situations that can be played", Effect::reads, none, listScenarios},
    {"scenario NAME", "play a situation", Effect::changes, both, playScenario},
    {"tour begin NAME", "play a situation as the first of a tour", Effect::plays, both, beginTour},
    {"tour NAME", "play the next, unless another command has changed the state since: then refresh", Effect::plays,
     both, goOnWithTour},
    {"refresh", "renew the time of the last check, if the launch agent is installed", Effect::plays, both, refresh},
    {"help", "show this list", Effect::reads, none, help},
}};

Outcome help(const Invocation&)
{
    constexpr std::size_t column = 20;
    Outcome outcome{.text =
                        "A stand-in for the Quenchly checker. It keeps to the folders that QUENCHLY_HOME and\n"
                        "QUENCHLY_LAUNCH_AGENTS name, and touches no process.\n\n"};
    for (const Command& command : commands) {
        const std::string padding(column - command.usage.size(), ' ');
        outcome.text.append("  quenchly ").append(command.usage).append(padding).append(command.summary).append("\n");
    }
    outcome.text += "\nQUENCHLY_DASHBOARD_PORT names another port for serve, 0 any free one.\n";
    return outcome;
}

std::vector<std::string> wordsOf(std::string_view usage)
{
    std::istringstream stream{std::string(usage)};
    return {std::istream_iterator<std::string>(stream), {}};
}

bool isOperand(const std::string& word)
{
    return std::isupper(static_cast<unsigned char>(word.front())) != 0;
}

bool matches(const Command& command, const std::vector<std::string>& arguments)
{
    const auto fits = [](const std::string& word, const std::string& argument) {
        return isOperand(word) || word == argument;
    };
    return std::ranges::equal(wordsOf(command.usage), arguments, fits);
}

std::string misuse(const std::vector<std::string>& arguments)
{
    if (arguments.empty())
        return "no command; see 'quenchly help'";
    for (const Command& command : commands)
        if (wordsOf(command.usage).front() == arguments.front())
            return "usage: quenchly " + std::string(command.usage);
    return "unknown command '" + arguments.front() + "'; see 'quenchly help'";
}

/// The absolute folder that an environment variable names; empty when it names none.
std::filesystem::path folderFrom(const char* variable)
{
    const char* value = std::getenv(variable);
    std::error_code failure;
    return value == nullptr || *value == '\0' ? std::filesystem::path() : std::filesystem::absolute(value, failure);
}

/// A path that still holds when launchd starts the tool from another folder; a bare name is looked up there too.
std::string launchablePath(const std::string& program)
{
    std::error_code failure;
    return program.find('/') == std::string::npos ? program : std::filesystem::absolute(program, failure).string();
}

std::optional<std::string> missingFolder(const Folders& needs, const Invocation& invocation)
{
    if (needs.dataHome && invocation.dataHome.empty())
        return "QUENCHLY_HOME is not set";
    if (needs.launchAgents && invocation.launchAgents.empty())
        return "QUENCHLY_LAUNCH_AGENTS is not set";
    return std::nullopt;
}

Outcome run(const Command& command, const Invocation& invocation)
{
    if (const auto missing = missingFolder(command.needs, invocation))
        return {.status = misused, .text = *missing};
    std::error_code ignored;
    if (command.effect == Effect::reads || invocation.dataHome.empty())
        return command.run(invocation);
    const StateFiles files(invocation.dataHome);
    const FolderLock lock(files.folder());
    if (command.effect == Effect::changes)
        std::filesystem::remove(files.tour(), ignored);
    return command.run(invocation);
}

}  // namespace

Outcome runCommand(const std::string& program, const std::vector<std::string>& arguments)
{
    const auto command = std::ranges::find_if(commands, [&](const Command& c) { return matches(c, arguments); });
    if (command == commands.end())
        return {.status = misused, .text = misuse(arguments)};
    return run(*command, {.dataHome = folderFrom(CheckerContract::dataFolderVariable),
                          .launchAgents = folderFrom("QUENCHLY_LAUNCH_AGENTS"),
                          .home = folderFrom("HOME"),
                          .tool = launchablePath(program),
                          .operand = arguments.back(),
                          .now = currentInstant()});
}

}  // namespace quenchly::demo
