#include "scenarios.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <nlohmann/json.hpp>

#include "help_copy.h"
#include "launch_agent.h"
#include "live_metrics.h"
#include "metrics_json.h"
#include "relative_time.h"
#include "state_files.h"

namespace quenchly::demo {
namespace {

using namespace std::chrono_literals;
using RelativeTime::isoText;

/// What the checker and the launch agent have left on the machine in one situation.
struct Scene {
    Json heat;
    Json throttle = idleThrottle();
    bool pausing = false;
    bool protectionOn = true;
    bool agentInstalled = true;
};

/// A machine of eight processors and 4 GB of swap.
Json metricsOf(double load1, double swapUsedMB)
{
    const auto swap = LiveMetricsSampler::swapFromAmounts(4096, swapUsedMB);
    return metricsJson(*LiveMetricsSampler::sampleFrom({.load1 = load1, .cpuCount = 8, .swap = swap}, false));
}

Scene calm(Instant now)
{
    Scene scene;
    scene.heat = {{"lastCheck", isoText(now)},
                  {"thermalTruth", "cool"},
                  {"hot", false},
                  {"coolStreak", 14},
                  {"hotStreak", 0},
                  {"lastHotAt", isoText(now - 47min)},
                  {"lastCoolAt", isoText(now)},
                  {"paused", Json::array()},
                  {"quarantined", Json::array()},
                  {"updatedAt", isoText(now)},
                  {"lastMetrics", metricsOf(1.44, 328)},
                  {"slowActive", false}};
    return scene;
}

Scene overload(Instant now)
{
    Scene scene = calm(now);
    scene.heat["thermalTruth"] = "hot";
    scene.heat["hot"] = true;
    scene.heat["coolStreak"] = 0;
    scene.heat["hotStreak"] = 4;
    scene.heat["lastHotAt"] = isoText(now);
    scene.heat["lastCoolAt"] = isoText(now - 4min);
    scene.heat["lastMetrics"] = metricsOf(8.96, 1331);
    scene.heat["lastMetrics"]["menubarLine"] = "load 100% · swap 1.3 GB (32%)";
    return scene;
}

Json heldTarget(const char* label, int pid, Instant since, const char* reason)
{
    return {{"label", label}, {"pid", pid}, {"pausedAt", isoText(since)}, {"reason", reason}};
}

Scene holding(Instant now)
{
    Scene scene = overload(now);
    scene.pausing = true;
    scene.heat["paused"] =
        Json::array({heldTarget("ollama", 4127, now - 3min, "Load 97% of 8 CPUs in 2 checks; 512% CPU used"),
                     heldTarget("mlx", 4316, now - 2min, "Load 95% of 8 CPUs in 3 checks; 148% CPU used")});
    scene.heat["lastMetrics"] = metricsOf(7.52, 3113);
    return scene;
}

Json slowedTarget(const char* label, int pid)
{
    return {{"label", label}, {"pid", pid}};
}

Scene easing(Instant now)
{
    Scene scene = overload(now);
    scene.heat["slowActive"] = true;
    scene.heat["lastMetrics"] = metricsOf(7.36, 1679);
    scene.throttle = {{"level", 1},
                      {"dryRun", false},
                      {"targets", Json::array({slowedTarget("ollama", 4127), slowedTarget("llama-server", 4402)})},
                      {"updatedAt", isoText(now)}};
    return scene;
}

Scene falseHeat(Instant now)
{
    Scene scene = calm(now);
    scene.heat["thermalTruth"] = "false-heat";
    scene.heat["coolStreak"] = 2;
    scene.heat["lastMetrics"] = metricsOf(6.64, 2540);
    scene.heat["story"] = {{"text", "Using extra memory on disk. Work is progressing."}, {"tone", "watch"}};
    return scene;
}

Scene swapCritical(Instant now)
{
    Scene scene = overload(now);
    scene.pausing = true;
    scene.heat["paused"] =
        Json::array({heldTarget("ollama", 4127, now - 6min, "Load 96% of 8 CPUs in 2 checks; swap 93%")});
    scene.heat["hotStreak"] = 8;
    scene.heat["lastCoolAt"] = isoText(now - 8min);
    scene.heat["lastMetrics"] = metricsOf(7.28, 3891);
    scene.heat["memoryReliefTip"] = MemoryReliefCopy::tip();
    return scene;
}

Json setAsideEntry(const char* id, const char* kind, const char* command, Instant since, const char* reason)
{
    return {{"id", id},         {"kind", kind},         {"cmd", command}, {"quarantinedAt", isoText(since)},
            {"reason", reason}, {"acknowledged", false}};
}

Scene setAside(Instant now)
{
    Scene scene = calm(now);
    Json& entries = scene.heat["quarantined"];
    entries =
        Json::array({setAsideEntry("mlx-server-8080", "process", "/usr/local/bin/mlx_lm.server --port 8080", now - 5min,
                                   "The same request was answered 214 times in a minute"),
                     setAsideEntry("ollama-runner-53122", "process", "/opt/homebrew/bin/ollama runner --port 53122",
                                   now - 38min, "CPU use repeated every 4 s for 10 minutes"),
                     setAsideEntry("lmstudio-service", "launchd", "ai.lmstudio.headless", now - 2h,
                                   "Restarted 31 times in 10 minutes"),
                     setAsideEntry("ollama-serve", "process", "/opt/homebrew/bin/ollama serve", now - 3h,
                                   "CPU use repeated every 6 s for 10 minutes")});
    entries.back()["acknowledged"] = true;
    scene.heat["spectrumClass"] = "loop";
    return scene;
}

Scene stale(Instant now)
{
    return calm(now - 6min);
}

Scene protectionOff(Instant now)
{
    Scene scene = calm(now);
    scene.heat["lastMetrics"] = metricsOf(5.68, 942);
    scene.protectionOn = false;
    return scene;
}

Scene notSetUp(Instant now)
{
    Scene scene = calm(now);
    scene.agentInstalled = false;
    return scene;
}

struct Scenario {
    std::string_view name;
    Scene (*scene)(Instant now);
};

constexpr std::array<Scenario, 10> scenarios{{{"calm", calm},
                                              {"overload", overload},
                                              {"holding", holding},
                                              {"easing", easing},
                                              {"false-heat", falseHeat},
                                              {"swap-critical", swapCritical},
                                              {"set-aside", setAside},
                                              {"stale", stale},
                                              {"protection-off", protectionOff},
                                              {"not-set-up", notSetUp}}};

Json managed(bool protectionOn, Instant now)
{
    return protectionOn ? Json::object() : Json{{"disabledAt", isoText(now - 25min)}};
}

FileChanges changes(const Scene& scene, const Stage& stage)
{
    const StateFiles files(stage.dataHome);
    FileChanges result;
    result.writes = {storing(managed(scene.protectionOn, stage.now), files.managed()),
                     storing(Json{{"mode", scene.pausing ? "pause" : "off"}}, files.protectMode()),
                     storing(scene.throttle, files.throttle()), storing(scene.heat, files.heatState())};
    if (scene.agentInstalled)
        result.writes.push_back(launchAgent(stage.launchAgents, stage.tool, stage.dataHome));
    else
        result.removals.push_back(launchAgentPath(stage.launchAgents));
    return result;
}

}  // namespace

std::vector<std::string_view> scenarioNames()
{
    std::vector<std::string_view> names;
    std::ranges::transform(scenarios, std::back_inserter(names), &Scenario::name);
    return names;
}

std::optional<FileChanges> scenario(std::string_view name, const Stage& stage)
{
    const auto found = std::ranges::find(scenarios, name, &Scenario::name);
    if (found == scenarios.end())
        return std::nullopt;
    return changes(found->scene(stage.now), stage);
}

}  // namespace quenchly::demo
