#include "check.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "help_copy.h"
#include "metrics_json.h"
#include "relative_time.h"

namespace quenchly::demo {
namespace {

using RelativeTime::isoText;

constexpr int hotLoadPercent = 90;

std::int64_t streakAfter(const Json& state, const char* key)
{
    constexpr std::int64_t longest = 1'000'000;
    const auto streak = state.find(key);
    if (streak == state.end() || !streak->is_number_integer())
        return 1;
    return std::clamp<std::int64_t>(streak->get<std::int64_t>(), 0, longest - 1) + 1;
}

bool isTrueAt(const Json& state, const char* key)
{
    const auto value = state.find(key);
    return value != state.end() && value->is_boolean() && value->get<bool>();
}

bool isEasing(const Json& state)
{
    const auto paused = state.find("paused");
    return (paused != state.end() && paused->is_array() && !paused->empty()) || isTrueAt(state, "slowActive");
}

void judge(Json& state, bool hot, const std::string& time)
{
    const char* counted = hot ? "hotStreak" : "coolStreak";
    const char* ended = hot ? "coolStreak" : "hotStreak";
    state["thermalTruth"] = hot ? "hot" : "cool";
    state["hot"] = hot;
    state[counted] = streakAfter(state, counted);
    state[ended] = 0;
    state[hot ? "lastHotAt" : "lastCoolAt"] = time;
}

}  // namespace

Json checkedState(Json previous, const LastMetrics& metrics, Instant now)
{
    Json state = std::move(previous);
    const std::string time = isoText(now);
    state["lastCheck"] = time;
    judge(state, metrics.cpuLoadPct >= hotLoadPercent, time);
    state.emplace("paused", Json::array());
    state.emplace("quarantined", Json::array());
    state.emplace("slowActive", false);
    state["lastMetrics"] = metricsJson(metrics);
    state["updatedAt"] = time;
    // They told of the sample before.
    state.erase("story");
    state.erase("spectrumClass");
    state.erase("memoryReliefTip");
    if (metrics.swapCritical && isEasing(state))
        state["memoryReliefTip"] = MemoryReliefCopy::tip();
    return state;
}

Json renewedState(Json previous, Instant now)
{
    Json state = std::move(previous);
    const std::string time = isoText(now);
    state["lastCheck"] = time;
    state[isTrueAt(state, "hot") ? "lastHotAt" : "lastCoolAt"] = time;
    state["updatedAt"] = time;
    return state;
}

}  // namespace quenchly::demo
