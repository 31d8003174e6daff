#include "quarantine_display.h"

#include <algorithm>
#include <span>

#include "checker_contract.h"
#include "listed_targets.h"
#include "relative_time.h"

namespace quenchly::QuarantineDisplay {
namespace {

const std::string& subject(const QuarantinedEntry& entry)
{
    return entry.cmd.empty() ? entry.id.utf8() : entry.cmd.utf8();
}

/// The agent of an earlier version of the checker.
constexpr std::string_view earlierAgentLabel = "com.pellam.cpu-cooldown";

bool containsAny(std::string_view text, std::span<const std::string_view> marks)
{
    return std::ranges::any_of(marks, [&](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

bool isLaunchd(const QuarantinedEntry& entry)
{
    return entry.kind == "launchd";
}

std::string launchdLabel(const std::string& label)
{
    const std::string lower = lowercased(label);
    for (const ListedTargets::Target& target : ListedTargets::all)
        if (containsAny(lower, target.inLaunchdLabel))
            return std::string(target.launchdRowLabel);
    return label;
}

/// The last component of a path; slashes at its end do not count, and a path of slashes alone is the root.
std::string_view lastPathComponent(std::string_view path)
{
    const auto end = path.find_last_not_of('/');
    if (end == std::string_view::npos)
        return path.substr(0, 1);
    const auto slash = path.find_last_of('/', end);
    const auto begin = slash == std::string_view::npos ? 0 : slash + 1;
    return path.substr(begin, end + 1 - begin);
}

std::string commandLabel(const std::string& command)
{
    const std::string_view word = firstWord(command);
    return std::string(lastPathComponent(word.empty() ? std::string_view(command) : word));
}

}  // namespace

bool isAiManagedCommand(std::string_view command)
{
    const std::string lower = lowercased(command);
    return std::ranges::any_of(ListedTargets::all,
                               [&](const auto& target) { return containsAny(lower, target.inCommand); });
}

bool isAiManagedLaunchd(std::string_view label)
{
    const std::string lower = lowercased(label);
    if (lower == CheckerContract::agentLabel || lower == earlierAgentLabel)
        return false;
    return std::ranges::any_of(ListedTargets::all,
                               [&](const auto& target) { return containsAny(lower, target.inLaunchdLabel); });
}

bool isAiScoped(const QuarantinedEntry& entry)
{
    return isLaunchd(entry) ? isAiManagedLaunchd(subject(entry)) : isAiManagedCommand(subject(entry));
}

std::vector<QuarantinedEntry> visible(const std::vector<QuarantinedEntry>& entries, Instant now)
{
    std::vector<QuarantinedEntry> shown;
    for (const QuarantinedEntry& entry : entries) {
        if (entry.acknowledged || !isAiScoped(entry))
            continue;
        const auto since = RelativeTime::date(entry.quarantinedAt.utf8());
        if (since && secondsBetween(*since, now) <= retentionHours * 3600)
            shown.push_back(entry);
    }
    return shown;
}

std::string rowLabel(const QuarantinedEntry& entry)
{
    if (isLaunchd(entry))
        return launchdLabel(subject(entry));
    const std::string label = commandLabel(subject(entry));
    return label.empty() ? entry.id.utf8() : label;
}

}  // namespace quenchly::QuarantineDisplay
