#include "heat_state.h"

#include "json_object.h"
#include "metrics_line.h"

namespace quenchly {
namespace {

std::optional<PausedEntry> parsePaused(const JsonObject& object)
{
    auto label = object.string("label");
    if (!label)
        return std::nullopt;
    return PausedEntry{
        .label = std::move(*label),
        .pid = object.integer("pid").value_or(0),
        .pausedAt = object.string("pausedAt").value_or(""),
        .reason = object.string("reason").value_or(""),
    };
}

std::optional<QuarantinedEntry> parseQuarantined(const JsonObject& object)
{
    auto id = object.string("id");
    if (!id)
        return std::nullopt;
    return QuarantinedEntry{
        .id = std::move(*id),
        .kind = object.string("kind").value_or("process"),
        .cmd = object.string("cmd").value_or(""),
        .quarantinedAt = object.string("quarantinedAt").value_or(""),
        .reason = object.string("reason").value_or(""),
        .acknowledged = object.boolean("acknowledged"),
    };
}

/// The readable elements in file order; unreadable ones are skipped.
template <class Entry>
std::vector<Entry> entries(const JsonObject& object, CheckerContract::Key key,
                           std::optional<Entry> (*parseEntry)(const JsonObject&))
{
    std::vector<Entry> result;
    for (const JsonObject& element : object.objects(key))
        if (auto entry = parseEntry(element))
            result.push_back(std::move(*entry));
    return result;
}

std::optional<VerdictStory> parseStory(const std::optional<JsonObject>& object)
{
    auto text = object ? object->string("text") : std::nullopt;
    if (!text)
        return std::nullopt;
    const auto tone = fromRawValue<QuenchTone>(object->string("tone").value_or(""));
    return VerdictStory{.text = std::move(*text), .tone = tone.value_or(QuenchTone::watch)};
}

std::optional<Text> nonEmptyText(const JsonObject& object, CheckerContract::Key key)
{
    if (auto text = object.nonEmptyString(key))
        return Text(std::move(*text));
    return std::nullopt;
}

}  // namespace

std::optional<LastMetrics> LastMetrics::parse(const std::optional<JsonObject>& object)
{
    const auto load1 = object ? object->tolerantNumber("load1") : std::nullopt;
    if (!load1)
        return std::nullopt;
    LastMetrics metrics;
    metrics.load1 = *load1;
    metrics.swapPct = object->tolerantNumber("swapPct");
    metrics.swapUsedMB = object->tolerantNumber("swapUsedMB");
    metrics.cpuCount = object->tolerantInteger("cpuCount").value_or(1);
    const auto givenLoadPct = object->tolerantInteger("cpuLoadPct");
    metrics.cpuLoadPct = givenLoadPct ? *givenLoadPct : cpuLoadPercent(metrics.load1, metrics.cpuCount);
    metrics.swapCritical = object->boolean("swapCritical");
    const auto givenLine = object->nonEmptyString("menubarLine");
    metrics.menubarLine =
        givenLine
            ? *givenLine
            : metricsLine(
                  {.cpuLoadPct = metrics.cpuLoadPct, .swapPct = metrics.swapPct, .swapUsedMB = metrics.swapUsedMB});
    return metrics;
}

std::optional<HeatState> HeatState::parse(std::string_view data)
{
    const auto object = parseJsonObject(data);
    if (!object)
        return std::nullopt;
    return parse(JsonObject(*object));
}

HeatState HeatState::parse(const JsonObject& object)
{
    return HeatState{
        .lastCheck = nonEmptyText(object, "lastCheck"),
        .thermalTruth = object.nonEmptyString("thermalTruth").value_or("cool"),
        .hot = object.boolean("hot"),
        .coolStreak = object.tolerantInteger("coolStreak").value_or(0),
        .hotStreak = object.tolerantInteger("hotStreak").value_or(0),
        .lastHotAt = nonEmptyText(object, "lastHotAt"),
        .lastCoolAt = nonEmptyText(object, "lastCoolAt"),
        .lastRestoreAt = nonEmptyText(object, "lastRestoreAt"),
        .paused = entries<PausedEntry>(object, "paused", parsePaused),
        .quarantined = entries<QuarantinedEntry>(object, "quarantined", parseQuarantined),
        .updatedAt = nonEmptyText(object, "updatedAt"),
        .story = parseStory(object.object("story")),
        .spectrumClass = fromRawValue<SpectrumClass>(object.string("spectrumClass").value_or("")),
        .lastMetrics = LastMetrics::parse(object.object("lastMetrics")),
        .slowActive = object.boolean("slowActive"),
        .memoryReliefTip = nonEmptyText(object, "memoryReliefTip"),
    };
}

}  // namespace quenchly
