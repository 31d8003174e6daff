#include "timestamp.h"

#include <array>
#include <cstdio>

namespace quenchly::demo {

Instant currentInstant()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

std::string isoText(Instant instant)
{
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    return text.data();
}

std::optional<Instant> instantFrom(const std::string& isoText)
{
    int year = 0, hour = 0, minute = 0, second = 0;
    unsigned month = 0, day = 0;
    if (std::sscanf(isoText.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d", &year, &month, &day, &hour, &minute, &second) != 6)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok() || !isoText.ends_with('Z'))
        return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second);
}

}  // namespace quenchly::demo
