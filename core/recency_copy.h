#pragma once

#include <optional>
#include <string>

#include "instant.h"
#include "text.h"

/// Whether a check is overdue, and the lines that say so.
namespace quenchly::RecencyCopy {

inline constexpr double overdueAfterSeconds = 90.0;

/// Seconds since the time that `iso` names; none without a readable time or when it lies in the future.
std::optional<double> ageSeconds(const std::optional<Text>& iso, Instant now);

/// Always when the icon is stale or the age is unknown, else strictly after `overdueAfterSeconds`.
bool isOverdue(std::optional<double> ageSeconds, bool iconStale);

struct ExtraLine {
    std::optional<double> ageSeconds;
    bool iconStale = false;
    bool inFlight = false;
};
/// The recency word in the language in force; none when there is nothing to say.
std::optional<std::string> extraLine(const ExtraLine& arguments);

struct DropdownLine {
    Text age;
    std::optional<double> ageSeconds;
    bool iconStale = false;
    bool inFlight = false;
};
/// The same choice as `extraLine`; the age text does not matter.
std::optional<std::string> dropdownLine(const DropdownLine& arguments);

std::string checkingNow();
std::string checkingInAMoment();
std::string cadenceQuiet();

}  // namespace quenchly::RecencyCopy
