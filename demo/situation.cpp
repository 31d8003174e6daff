#include "situation.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "relative_time.h"
#include "status_builder.h"

namespace quenchly::demo {
namespace {

using namespace std::chrono_literals;

std::string textAt(const Json& object, const char* key)
{
    const auto value = object.find(key);
    return value != object.end() && value->is_string() ? value->get<std::string>() : std::string();
}

bool isTrueAt(const Json& object, const char* key)
{
    const auto value = object.find(key);
    return value != object.end() && value->is_boolean() && value->get<bool>();
}

Json objectAt(const Json& object, const char* key)
{
    const auto value = object.find(key);
    return value != object.end() && value->is_object() ? *value : Json::object();
}

std::vector<Json> objectsAt(const Json& object, const char* key)
{
    std::vector<Json> result;
    const auto value = object.find(key);
    if (value != object.end() && value->is_array())
        std::ranges::copy_if(*value, std::back_inserter(result), [](const Json& entry) { return entry.is_object(); });
    return result;
}

std::optional<double> percentAt(const Json& object, const char* key)
{
    const auto value = object.find(key);
    if (value == object.end() || !value->is_number())
        return std::nullopt;
    return std::clamp(value->get<double>(), 0.0, 100.0);
}

std::string ageText(Instant then, Instant now)
{
    const auto age = std::max(std::chrono::floor<std::chrono::seconds>(now - then), 0s);
    const auto counted = [](long long count, const char* unit) { return std::to_string(count) + unit + " ago"; };
    if (age < 1min)
        return counted(age.count(), " s");
    if (age < 1h)
        return counted(age / 1min, " min");
    return counted(age / 1h, " h");
}

std::string ageOf(const std::string& iso, Instant now)
{
    const std::optional<Instant> then = RelativeTime::date(iso);
    return then ? ageText(*then, now) : iso;
}

bool isStale(const std::string& lastCheck, Instant now)
{
    const std::optional<Instant> then = RelativeTime::date(lastCheck);
    return !then || secondsBetween(*then, now) > QuenchStatusBuilder::staleAfterSeconds;
}

std::vector<SituationEntry> heldTargets(const Json& heat)
{
    std::vector<SituationEntry> result;
    for (const Json& target : objectsAt(heat, "paused"))
        result.push_back({.name = textAt(target, "label"), .note = textAt(target, "reason")});
    return result;
}

std::vector<SituationEntry> slowedTargets(const Json& throttle)
{
    std::vector<SituationEntry> result;
    for (const Json& target : objectsAt(throttle, "targets"))
        result.push_back({.name = textAt(target, "label"), .note = "running at reduced speed"});
    return result;
}

std::vector<SituationEntry> setAsideEntries(const Json& heat, Instant now)
{
    std::vector<SituationEntry> result;
    for (const Json& entry : objectsAt(heat, "quarantined"))
        if (!isTrueAt(entry, "acknowledged"))
            result.push_back({.name = textAt(entry, "cmd"),
                              .note = textAt(entry, "reason") + ", " + ageOf(textAt(entry, "quarantinedAt"), now)});
    return result;
}

void judge(Situation& situation, const Json& heat, Instant now)
{
    const auto is = [&](const char* headline, const char* tone) {
        situation.headline = headline;
        situation.tone = tone;
    };
    if (heat.empty())
        return is("No check yet", "watch");
    if (situation.protection == "Off")
        return is("Protection is off", "off");
    if (isStale(textAt(heat, "lastCheck"), now))
        return is("No check for a while", "watch");
    if (!situation.held.empty())
        return is("Holding local AI until pressure drops", "hold");
    if (isTrueAt(heat, "slowActive"))
        return is("Easing local AI", "hold");
    if (isTrueAt(heat, "hot"))
        return is("Overload", "hold");
    if (textAt(heat, "thermalTruth") == "false-heat")
        return is("Busy, but not overloaded", "watch");
    is("Calm", "calm");
}

}  // namespace

Situation readSituation(const StateFiles& files, Instant now)
{
    const Json heat = readObject(files.heatState()).value_or(Json::object());
    const Json managed = readObject(files.managed()).value_or(Json::object());
    const Json throttle = readObject(files.throttle()).value_or(Json::object());
    const Json metrics = objectAt(heat, "lastMetrics");

    Situation situation;
    situation.protection = textAt(managed, "disabledAt").empty() ? "On" : "Off";
    situation.lastCheck = heat.empty() ? "never" : ageOf(textAt(heat, "lastCheck"), now);
    situation.loadPercent = percentAt(metrics, "cpuLoadPct");
    situation.swapPercent = percentAt(metrics, "swapPct");
    situation.memoryReliefTip = textAt(heat, "memoryReliefTip");
    situation.held = heldTargets(heat);
    situation.slowed = slowedTargets(throttle);
    situation.setAside = setAsideEntries(heat, now);
    judge(situation, heat, now);
    return situation;
}

}  // namespace quenchly::demo
