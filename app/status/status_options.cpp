#include "status_options.h"

#include <getopt.h>

#include <array>
#include <string_view>
#include <system_error>

#include "relative_time.h"
#include "user_home.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

enum Option : int { json = 1, bar, plain, watch, noLive, home, dataHome, launchAgents, now, language, version, help };

constexpr std::array<option, 13> longOptions{{
    {"json", no_argument, nullptr, json},
    {"bar", optional_argument, nullptr, bar},
    {"plain", no_argument, nullptr, plain},
    {"watch", no_argument, nullptr, watch},
    {"no-live", no_argument, nullptr, noLive},
    {"home", required_argument, nullptr, home},
    {"data-home", required_argument, nullptr, dataHome},
    {"launch-agents", required_argument, nullptr, launchAgents},
    {"now", required_argument, nullptr, now},
    {"language", required_argument, nullptr, language},
    {"version", no_argument, nullptr, version},
    {"help", no_argument, nullptr, help},
    {nullptr, 0, nullptr, 0},
}};

/// An empty name would stand for the folder that was meant to be replaced.
fs::path folderNamed(StatusOptions& options, const char* text)
{
    if (*text == '\0')
        options.error = "a folder's name is empty";
    std::error_code ignored;
    return fs::absolute(text, ignored);
}

std::string typed(StatusOptions::Format format)
{
    switch (format) {
        case StatusOptions::Format::json:
            return "--json";
        case StatusOptions::Format::bar:
            return "--bar";
        case StatusOptions::Format::i3bar:
            return "--bar=i3bar";
        case StatusOptions::Format::plain:
            return "--plain";
        case StatusOptions::Format::full:
            break;
    }
    return {};
}

void setFormat(StatusOptions& options, StatusOptions::Format format)
{
    if (options.format != StatusOptions::Format::full && options.format != format)
        options.error = typed(options.format) + " and " + typed(format) + " exclude each other";
    options.format = format;
}

/// `protocol` is null for the bars that take a line of JSON for each status.
void setBar(StatusOptions& options, const char* protocol)
{
    if (protocol == nullptr)
        return setFormat(options, StatusOptions::Format::bar);
    if (std::string_view(protocol) == "i3bar")
        return setFormat(options, StatusOptions::Format::i3bar);
    options.error = std::string("unknown bar: ") + protocol + " (i3bar)";
}

void setNow(StatusOptions& options, const char* text)
{
    options.now = RelativeTime::date(text);
    if (!options.now)
        options.error = std::string("not an ISO-8601 time: ") + text;
}

void setLanguage(StatusOptions& options, const char* code)
{
    options.language = L10n::languageForCode(code);
    if (!options.language)
        options.error = std::string("unknown language: ") + code + " (" + L10n::languageCodes(", ") + ")";
}

void apply(StatusOptions& options, std::optional<fs::path>& launchAgentsDir, int option)
{
    switch (option) {
        case json:
            return setFormat(options, StatusOptions::Format::json);
        case bar:
            return setBar(options, optarg);
        case plain:
            return setFormat(options, StatusOptions::Format::plain);
        case watch:
            options.watch = true;
            return;
        case noLive:
            options.live = false;
            return;
        case home:
            options.home = folderNamed(options, optarg);
            options.homeIsGiven = true;
            return;
        case dataHome:
            options.dataHome = folderNamed(options, optarg);
            return;
        case launchAgents:
            launchAgentsDir = folderNamed(options, optarg);
            return;
        case now:
            return setNow(options, optarg);
        case language:
            return setLanguage(options, optarg);
        case version:
            options.showVersion = true;
            return;
        case help:
            options.showHelp = true;
            return;
        default:
            options.error = "unknown option";
    }
}

/// The argument that getopt stopped at, for the message; getopt's own would begin with the program's path. Within a
/// group of letters getopt has not moved on yet.
std::string refusedArgument(int argc, char** argv)
{
    const bool isLetter = optopt > help;
    if (isLetter)
        return std::string("-") + static_cast<char>(optopt);
    const int at = optind - 1;
    return at > 0 && at < argc ? argv[at] : "";
}

}  // namespace

StatusOptions parseStatusOptions(int argc, char** argv)
{
    StatusOptions options;
    std::optional<fs::path> launchAgentsDir;
    opterr = 0;
    for (int option;
         options.error.empty() && (option = getopt_long(argc, argv, ":", longOptions.data(), nullptr)) != -1;) {
        if (option == ':')
            options.error = "option needs a value: " + refusedArgument(argc, argv);
        else if (option == '?')
            options.error = "unknown option: " + refusedArgument(argc, argv);
        else
            apply(options, launchAgentsDir, option);
    }
    if (options.error.empty() && optind < argc)
        options.error = std::string("unexpected argument: ") + argv[optind];
    if (!options.homeIsGiven)
        options.home = userHomeFolder();
    options.launchAgents = launchAgentsDir ? *launchAgentsDir : options.home / "Library/LaunchAgents";
    return options;
}

}  // namespace quenchly
