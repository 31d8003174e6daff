#include "whole_files.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "relative_time.h"

namespace quenchly::soak {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr std::array scenarios{"calm",          "overload",  "holding", "easing",         "false-heat",
                               "swap-critical", "set-aside", "stale",   "protection-off", "not-set-up"};

std::optional<std::string> contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

Json dated(const std::string& text, Instant lastCheck)
{
    Json state = Json::parse(text, nullptr, false);
    state["lastCheck"] = RelativeTime::isoText(lastCheck);
    state["updatedAt"] = state["lastCheck"];
    return state;
}

}  // namespace

fs::path fileAt(const CheckedHome& home, std::size_t place)
{
    return place < stateFileNames.size() ? home.stateFolder() / stateFileNames[place] : home.agentFile();
}

WholeFiles::WholeFiles(const fs::path& scratch)
{
    for (const std::string name : scenarios) {
        const CheckedHome home{scratch / name};
        if (!runStandIn(home, {"scenario", name}))
            continue;
        situations_.push_back(name);
        for (std::size_t place = 0; place < fileCount; ++place)
            texts_[name][place] = contentOf(fileAt(home, place));
    }
}

std::optional<std::string> WholeFiles::text(const std::string& situation, std::size_t place, Instant lastCheck) const
{
    const std::optional<std::string>& stored = texts_.at(situation)[place];
    if (place != 0 || !stored)
        return stored;
    return dated(*stored, lastCheck).dump(2);
}

std::string WholeFiles::textWithSetAside(const std::string& situation, std::size_t count, Instant lastCheck) const
{
    Json state = dated(texts_.at(situation)[0].value_or("{}"), lastCheck);
    Json& entries = state["quarantined"] = Json::array();
    while (entries.size() < count)
        entries.push_back({{"id", "looper-" + std::to_string(entries.size())},
                           {"cmd", "/opt/models/serve --port " + std::to_string(8000 + entries.size())},
                           {"quarantinedAt", RelativeTime::isoText(lastCheck)},
                           {"reason", "The same request was answered 214 times in a minute"}});
    return state.dump(2);
}

}  // namespace quenchly::soak
