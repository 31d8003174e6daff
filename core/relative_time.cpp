#include "relative_time.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

namespace quenchly::RelativeTime {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::microseconds;
using std::chrono::minutes;
using std::chrono::seconds;

/// Reads a text from its start; once something did not fit, everything after it fails too.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    int digits(std::size_t count)
    {
        int value = 0;
        for (; count > 0; --count)
            value = value * 10 + digit();
        return value;
    }

    void literal(char expected)
    {
        if (!skip(expected))
            failed_ = true;
    }

    bool skip(char expected)
    {
        if (rest_.empty() || rest_.front() != expected)
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool atDigit() const { return !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9'; }
    void fail() { failed_ = true; }
    bool finished() const { return !failed_ && rest_.empty(); }

private:
    int digit()
    {
        if (!atDigit()) {
            failed_ = true;
            return 0;
        }
        const int value = rest_.front() - '0';
        rest_.remove_prefix(1);
        return value;
    }

    std::string_view rest_;
    bool failed_ = false;
};

Instant calendarTime(Scanner& scan)
{
    const int year = scan.digits(4);
    scan.literal('-');
    const auto month = static_cast<unsigned>(scan.digits(2));
    scan.literal('-');
    const auto day = static_cast<unsigned>(scan.digits(2));
    scan.literal('T');
    const int hour = scan.digits(2);
    scan.literal(':');
    const int minute = scan.digits(2);
    scan.literal(':');
    const int second = scan.digits(2);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) {
        scan.fail();
        return {};
    }
    return std::chrono::sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

/// Digits beyond the microsecond are read and dropped.
microseconds fraction(Scanner& scan)
{
    scan.literal('.');
    std::int64_t value = 0;
    std::int64_t unit = 1'000'000;
    if (!scan.atDigit())
        scan.fail();
    while (scan.atDigit()) {
        unit /= 10;
        value += scan.digits(1) * unit;
    }
    return microseconds(value);
}

minutes zone(Scanner& scan)
{
    if (scan.skip('Z'))
        return minutes(0);
    const bool west = scan.skip('-');
    if (!west)
        scan.literal('+');
    const int hour = scan.digits(2);
    scan.literal(':');
    const int minute = scan.digits(2);
    if (hour > 23 || minute > 59)
        scan.fail();
    const minutes offset = hours(hour) + minutes(minute);
    return west ? -offset : offset;
}

std::optional<Instant> internetDateTime(std::string_view text, bool withFraction)
{
    Scanner scan(text);
    Instant instant = calendarTime(scan);
    if (withFraction)
        instant += fraction(scan);
    instant -= zone(scan);
    return scan.finished() ? std::optional(instant) : std::nullopt;
}

std::optional<Instant> zonelessDateTime(std::string_view text)
{
    Scanner scan(text);
    const Instant instant = calendarTime(scan);
    return scan.finished() ? std::optional(instant) : std::nullopt;
}

}  // namespace

std::optional<Instant> date(std::string_view fromISO)
{
    if (const auto instant = internetDateTime(fromISO, true))
        return instant;
    if (const auto instant = internetDateTime(fromISO, false))
        return instant;
    return zonelessDateTime(fromISO);
}

std::string ageAgo(const std::optional<Text>& from, Instant now)
{
    const auto instant = from ? date(from->utf8()) : std::nullopt;
    if (!instant || now < *instant)
        return {};
    const std::int64_t s = std::chrono::floor<seconds>(now - *instant).count();
    if (s < 60)
        return std::to_string(s) + "s ago";
    if (s < 3600)
        return std::to_string(s / 60) + "m " + std::to_string(s % 60) + "s ago";
    return std::to_string(s / 3600) + "h " + std::to_string(s % 3600 / 60) + "m ago";
}

std::string isoText(Instant instant)
{
    const auto day = std::chrono::floor<days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::milliseconds>(instant - day));
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    return text;
}

}  // namespace quenchly::RelativeTime
