#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "heat_state.h"
#include "json_object.h"
#include "l10n.h"
#include "live_metrics.h"
#include "menu_bar_label.h"
#include "observe_only.h"
#include "quarantine_display.h"
#include "status_builder.h"
#include "status_json.h"
#include "text.h"

namespace {

using namespace quenchly;
namespace fs = std::filesystem;

void require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

/// One installation with background checks and one without, made once for the whole run.
struct Installations {
    Installations()
    {
        std::string name = (fs::temp_directory_path() / "quenchly-fuzz-XXXXXX").string();
        require(mkdtemp(name.data()) != nullptr);
        root = name;
        fs::create_directories(root / "agents");
        std::ofstream(root / "agents" / ObserveOnly::agentPlistName) << "<plist/>";
        require(ObserveOnly::isAgentInstalled(root / "agents"));
        L10n::testingLanguage = AppLanguage::en;
    }
    ~Installations()
    {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    fs::path root;
};

const fs::path& installations()
{
    static const Installations made;
    return made.root;
}

void checkLine(std::string_view text)
{
    constexpr std::size_t limit = 20;
    const std::string line = displayLine(text, limit);
    require(isValidUtf8(line));
    require(displayLine(line, limit) == line);
    std::size_t characters = 0;
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        require(byte >= 0x20 && byte != 0x7F);
        characters += (byte & 0xC0) != 0x80;
    }
    require(characters <= limit);
}

void checkText(const Text& text)
{
    require(isValidUtf8(text.utf8()));
    require(text == Text(text));
    require(isValidUtf8(lowercased(text.utf8())));
    checkLine(text.utf8());
    checkLine(text.utf8().substr(text.utf8().size() / 2));
}

void checkLabel(const QuenchStatus& status, Instant now)
{
    for (const bool inFlight : {false, true}) {
        const MenuBarLabel label = menuBarLabel(status, now, inFlight);
        require(!label.statusWord.empty());
        require(!inFlight || label.recency);
        require(isValidUtf8(label.text()));
        require(label.text().find('\n') == std::string::npos);
    }
    if (status.metricsLine)
        require(isValidUtf8(compactStripMetrics(status.metricsLine->utf8())));
}

void checkJson(const QuenchStatus& status)
{
    const std::string json = statusJson(status);
    require(isValidUtf8(json));
    require(json.find('\n') == std::string::npos);
    const auto object = parseJsonObject(json);
    require(object && object->size() == 18);
    require(object->at("pausedTargets").size() == status.pausedTargets.size());
    require(object->at("quarantine").size() == status.quarantine.size());
    require(object->at("headline") == status.headline.utf8());
}

void checkStatus(const QuenchStatus& status, const HeatState& state, Instant now)
{
    require(status.pausedTargets == state.paused);
    require(status.quarantine.size() <= state.quarantined.size());
    require(status.lastMetrics == state.lastMetrics);
    require(status.tone || status.icon == QuenchIcon::stale);
    for (const Text& text : {status.headline, status.detail, status.lastCheckAge, status.metricsLine.value_or(""),
                             status.lastCheckISO.value_or(""), status.memoryReliefTip.value_or("")})
        checkText(text);
    for (const PausedEntry& entry : status.pausedTargets)
        for (const Text& text : {entry.label, entry.pausedAt, entry.reason})
            checkText(text);
    for (const QuarantinedEntry& entry : status.quarantine) {
        require(!entry.acknowledged);
        for (const Text& text : {entry.id, entry.kind, entry.cmd, entry.reason})
            checkText(text);
        checkText(QuarantineDisplay::rowLabel(entry));
    }
    checkLabel(status, now);
    checkJson(status);
}

void checkState(const HeatState& state, std::string_view bytes)
{
    require(isValidUtf8(bytes));
    require(HeatState::parse(bytes) == state);
    require(!state.thermalTruth.empty());
    require(!state.lastMetrics || !state.lastMetrics->menubarLine.empty());

    const Instant now = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(12);
    const LastMetrics live =
        *LiveMetricsSampler::sampleFrom({.load1 = 5.84, .cpuCount = 8, .swap = {.usedMB = 3277.0, .pct = 95.0}}, false);
    const std::optional<HeatState> read = state;
    const fs::path dataHome = installations() / "home";
    for (const char* agents : {"agents", "absent"}) {
        const fs::path agentsDir = installations() / agents;
        const QuenchStatus status =
            QuenchStatusBuilder::build(read, {.dataHome = dataHome, .launchAgentsDir = agentsDir}, now);
        checkStatus(status, state, now);

        const QuenchStatus merged = status.withLiveMetrics(live);
        require(merged.metricsLine == live.menubarLine && merged.swapCritical);
        checkText(merged.detail);
        checkLabel(merged, now);
        checkJson(merged);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto state = HeatState::parse(bytes))
        checkState(*state, bytes);
    return 0;
}
