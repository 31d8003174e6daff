#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <system_error>

#include "checker_contract.h"
#include "current_instant.h"
#include "file_reading.h"
#include "live_sample.h"
#include "product.h"
#include "reader_gone.h"
#include "state_folder.h"
#include "status_builder.h"
#include "status_json.h"
#include "status_options.h"
#include "status_text.h"

namespace {

using namespace quenchly;

constexpr const char* helpBeforeLanguages =
    "Usage: quenchly-status [--json | --bar[=i3bar] | --plain] [--watch] [--no-live] [options]\n"
    "Prints how this machine bears its local AI models.\n"
    "\n"
    "  --json               one JSON object with every field of the status\n"
    "  --bar                one line of JSON with text, tooltip and class, for the custom module of a status bar\n"
    "  --bar=i3bar          the protocol of i3bar and swaybar\n"
    "  --plain              one line of text\n"
    "  --watch              print again, at most once a second, whenever something changed\n"
    "  --no-live            show the checker's own figures instead of a live sample\n"
    "  --home DIR           look below DIR instead of the home folder\n"
    "  --data-home DIR      the checker's data folder\n"
    "  --launch-agents DIR  the folder of the background job's file\n"
    "  --now ISO            the time to reckon with\n"
    "  --language CODE      ";

std::string helpText()
{
    return helpBeforeLanguages + L10n::languageCodes(" or ") + "\n  --version, --help\n";
}

std::map<std::string, std::string> folderVariables()
{
    std::map<std::string, std::string> variables;
    for (const char* name : CheckerContract::dataFolderVariables)
        if (const char* value = std::getenv(name))
            variables.emplace(name, value);
    return variables;
}

StateFileResolver::Resolution stateFolder(const StatusOptions& options)
{
    if (options.dataHome)
        return {.dataHome = *options.dataHome,
                .state = *options.dataHome / CheckerContract::stateFolder / CheckerContract::heatStateFile};
    std::error_code ignored;
    return StateFileResolver::resolve({.env = folderVariables(),
                                       .homeFolder = options.home,
                                       .keepsToHomeFolder = options.homeIsGiven,
                                       .currentDirectory = std::filesystem::current_path(ignored)});
}

Instant currentTime(const StatusOptions& options)
{
    return options.now ? *options.now : currentInstant();
}

QuenchStatus build(const std::optional<HeatState>& state, const StatusOptions& options,
                   const StateFileResolver::Resolution& folder, Instant now)
{
    return QuenchStatusBuilder::build(state, {.dataHome = folder.dataHome, .launchAgentsDir = options.launchAgents},
                                      now);
}

/// A missing file is an empty state and takes no live sample; one that is no state counts as none. No status at all
/// when there is a file that cannot be read or is too large.
std::optional<QuenchStatus> currentStatus(const StatusOptions& options, const StateFileResolver::Resolution& folder,
                                          Instant now)
{
    const FileReading file = readFile(folder.state);
    if (file.outcome == FileReading::Outcome::unreadable || file.outcome == FileReading::Outcome::tooLarge)
        return std::nullopt;
    const bool missing = file.outcome == FileReading::Outcome::missing;
    const std::optional<HeatState> state = missing ? HeatState() : HeatState::parse(file.bytes);
    const QuenchStatus status = build(state, options, folder, now);
    if (missing || !options.live)
        return status;
    const auto sample = LiveMetricsSampler::sample(status.swapCritical);
    return sample ? status.withLiveMetrics(*sample) : status;
}

/// What stands until the state can be read for the first time, as in the application.
QuenchStatus initialStatus(const StatusOptions& options, const StateFileResolver::Resolution& folder, Instant now)
{
    return build(HeatState(), options, folder, now);
}

std::string render(const StatusOptions& options, const QuenchStatus& status, Instant now)
{
    switch (options.format) {
        case StatusOptions::Format::json:
            return statusJson(status) + "\n";
        case StatusOptions::Format::bar:
            return barStatus(status, now);
        case StatusOptions::Format::i3bar:
            return i3barStatus(status, now);
        case StatusOptions::Format::plain:
            return plainStatus(status, now);
        case StatusOptions::Format::full:
            break;
    }
    return fullStatus(status, now);
}

/// What is printed around the statuses.
struct Framing {
    std::string_view before;
    std::string_view between;
    std::string_view after;
};

/// i3bar reads a header and then one array of statuses.
Framing framing(const StatusOptions& options)
{
    if (options.format != StatusOptions::Format::i3bar)
        return {};
    return {.before = "{\"version\":1}\n[\n", .between = ",", .after = "]\n"};
}

bool print(const std::string& text)
{
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

int printOnce(const StatusOptions& options, const StateFileResolver::Resolution& folder)
{
    const Instant now = currentTime(options);
    const auto status = currentStatus(options, folder, now);
    std::string text(framing(options).before);
    text += render(options, status ? *status : initialStatus(options, folder, now), now);
    return print(text.append(framing(options).after)) ? 0 : 1;
}

/// Until nobody reads any more. While the state cannot be read, the last known status stands.
int watch(const StatusOptions& options, const StateFileResolver::Resolution& folder)
{
    constexpr std::chrono::milliseconds untilNextLook{1000};
    std::string shown;
    std::optional<QuenchStatus> status;
    std::string_view before = framing(options).before;
    do {
        const Instant now = currentTime(options);
        if (auto current = currentStatus(options, folder, now))
            status = std::move(current);
        else if (!status)
            status = initialStatus(options, folder, now);
        std::string text = render(options, *status, now);
        if (text == shown)
            continue;
        if (!print(std::string(before) + text))
            return 0;
        before = framing(options).between;
        shown = std::move(text);
    } while (!readerIsGoneWithin(STDOUT_FILENO, untilNextLook));
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const StatusOptions options = parseStatusOptions(argc, argv);
    if (!options.error.empty()) {
        std::fprintf(stderr, "quenchly-status: %s\n", options.error.c_str());
        return 2;
    }
    if (options.showHelp)
        return print(helpText()) ? 0 : 1;
    if (options.showVersion)
        return print(std::string("quenchly-status ") + version + "\n") ? 0 : 1;
    L10n::testingLanguage = options.language;
    const StateFileResolver::Resolution folder = stateFolder(options);
    return options.watch ? watch(options, folder) : printOnce(options, folder);
}
