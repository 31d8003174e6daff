#include "status_json.h"

#include <nlohmann/json.hpp>

namespace quenchly {
namespace {

using nlohmann::ordered_json;

ordered_json encode(const Text& text)
{
    return text.utf8();
}

ordered_json encode(double number)
{
    return number;
}

ordered_json encode(const PausedEntry& entry)
{
    return {{"label", encode(entry.label)},
            {"pid", entry.pid},
            {"pausedAt", encode(entry.pausedAt)},
            {"reason", encode(entry.reason)}};
}

ordered_json encode(const QuarantinedEntry& entry)
{
    return {{"id", encode(entry.id)},         {"kind", encode(entry.kind)},
            {"cmd", encode(entry.cmd)},       {"quarantinedAt", encode(entry.quarantinedAt)},
            {"reason", encode(entry.reason)}, {"acknowledged", entry.acknowledged}};
}

ordered_json encode(QuenchTone tone)
{
    return rawValue(tone);
}

template <class T>
ordered_json encode(const std::optional<T>& value);

ordered_json encode(const LastMetrics& metrics)
{
    return {{"load1", metrics.load1},
            {"swapPct", encode(metrics.swapPct)},
            {"swapUsedMB", encode(metrics.swapUsedMB)},
            {"cpuCount", metrics.cpuCount},
            {"cpuLoadPct", metrics.cpuLoadPct},
            {"swapCritical", metrics.swapCritical},
            {"menubarLine", encode(metrics.menubarLine)}};
}

template <class T>
ordered_json encode(const std::optional<T>& value)
{
    return value ? encode(*value) : ordered_json(nullptr);
}

template <class T>
ordered_json encode(const std::vector<T>& values)
{
    ordered_json array = ordered_json::array();
    for (const T& value : values)
        array.push_back(encode(value));
    return array;
}

}  // namespace

std::string statusJson(const QuenchStatus& status)
{
    const ordered_json object = {
        {"icon", rawValue(status.icon)},
        {"barTint", rawValue(status.barTint)},
        {"headline", encode(status.headline)},
        {"detail", encode(status.detail)},
        {"lastCheckISO", encode(status.lastCheckISO)},
        {"lastCheckAge", encode(status.lastCheckAge)},
        {"pausedTargets", encode(status.pausedTargets)},
        {"quarantine", encode(status.quarantine)},
        {"tone", encode(status.tone)},
        {"observeOnly", status.observeOnly},
        {"managementDisabled", status.managementDisabled},
        {"metricsLine", encode(status.metricsLine)},
        {"lastMetrics", encode(status.lastMetrics)},
        {"swapCritical", status.swapCritical},
        {"stillOverloaded", status.stillOverloaded},
        {"slowActive", status.slowActive},
        {"agentInstalled", status.agentInstalled},
        {"memoryReliefTip", encode(status.memoryReliefTip)},
    };
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace quenchly
