#include "recency_copy.h"

#include "l10n.h"
#include "relative_time.h"

namespace quenchly::RecencyCopy {

std::optional<double> ageSeconds(const std::optional<Text>& iso, Instant now)
{
    const auto instant = iso ? RelativeTime::date(iso->utf8()) : std::nullopt;
    if (!instant || now < *instant)
        return std::nullopt;
    return secondsBetween(*instant, now);
}

bool isOverdue(std::optional<double> ageSeconds, bool iconStale)
{
    return iconStale || !ageSeconds || *ageSeconds > overdueAfterSeconds;
}

std::optional<std::string> extraLine(const ExtraLine& arguments)
{
    if (arguments.inFlight)
        return checkingNow();
    if (isOverdue(arguments.ageSeconds, arguments.iconStale))
        return checkingInAMoment();
    return std::nullopt;
}

std::optional<std::string> dropdownLine(const DropdownLine& arguments)
{
    return extraLine(
        {.ageSeconds = arguments.ageSeconds, .iconStale = arguments.iconStale, .inFlight = arguments.inFlight});
}

std::string checkingNow()
{
    return L10n::t("checking_now");
}

std::string checkingInAMoment()
{
    return L10n::t("checking_in_a_moment");
}

std::string cadenceQuiet()
{
    return L10n::t("cadence_quiet");
}

}  // namespace quenchly::RecencyCopy
