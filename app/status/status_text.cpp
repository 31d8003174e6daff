#include "status_text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "l10n.h"
#include "menu_bar_label.h"
#include "protect_lockup.h"
#include "quarantine_display.h"
#include "recency_copy.h"
#include "relative_time.h"
#include "text.h"
#include "wind_palette.h"

namespace quenchly {
namespace {

/// More rows would push the headline out of a terminal.
constexpr std::size_t maxRows = 20;

std::string line(std::string_view text)
{
    return displayLine(text) + "\n";
}

std::string ageOf(const Text& iso, Instant now)
{
    return RelativeTime::ageAgo(iso, now);
}

std::string lastCheckLine(const QuenchStatus& status, Instant now)
{
    const auto age = RecencyCopy::ageSeconds(status.lastCheckISO, now);
    const auto recency = RecencyCopy::extraLine({.ageSeconds = age, .iconStale = status.icon == QuenchIcon::stale});
    std::string text = status.lastCheckAge.empty() ? "" : L10n::tf("last_check", {status.lastCheckAge.utf8()});
    if (recency && *recency != status.headline.utf8())
        text += (text.empty() ? "" : " · ") + *recency;
    return text.empty() ? std::string() : line(text);
}

std::string row(const std::string& label, const Text& since, const Text& reason, Instant now)
{
    std::string text = "  " + displayLine(label, 60);
    for (const std::string& part : {ageOf(since, now), displayLine(reason.utf8(), 120)})
        if (!part.empty())
            text += " · " + part;
    return text + "\n";
}

template <class Entry, class MakeRow>
std::string rows(const std::vector<Entry>& entries, MakeRow makeRow)
{
    std::string text;
    for (std::size_t i = 0; i < std::min(entries.size(), maxRows); ++i)
        text += makeRow(entries[i]);
    if (entries.size() > maxRows)
        text += "  +" + std::to_string(entries.size() - maxRows) + "\n";
    return text;
}

std::string heldRows(const QuenchStatus& status, Instant now)
{
    if (status.pausedTargets.empty())
        return {};
    return L10n::t("eased_back_heading") + "\n" + rows(status.pausedTargets, [&](const PausedEntry& entry) {
               return row(entry.label.utf8(), entry.pausedAt, entry.reason, now);
           });
}

std::string setAsideRows(const QuenchStatus& status, Instant now)
{
    if (status.quarantine.empty())
        return {};
    const auto count = static_cast<std::int64_t>(status.quarantine.size());
    return L10n::tf("set_aside_heading", {count}) + "\n" + rows(status.quarantine, [&](const QuarantinedEntry& entry) {
               return row(QuarantineDisplay::rowLabel(entry), entry.quarantinedAt, entry.reason, now);
           });
}

std::string escapedMarkup(std::string text)
{
    text = replacingAll(text, "&", "&amp;");
    text = replacingAll(text, "<", "&lt;");
    return replacingAll(text, ">", "&gt;");
}

std::string jsonLine(const nlohmann::ordered_json& value)
{
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::string hexColor(std::uint32_t color)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += digits[color >> shift & 0xFU];
    return text;
}

}  // namespace

std::string fullStatus(const QuenchStatus& status, Instant now)
{
    const std::string lockup =
        ProtectLockup::panel({.protectOn = !status.managementDisabled, .agentInstalled = status.agentInstalled});
    std::string text = line(status.headline.utf8());
    for (const Text& further : {Text(lockup), status.detail})
        if (further != status.headline)
            text += line(further.utf8());
    return text + lastCheckLine(status, now) + heldRows(status, now) + setAsideRows(status, now);
}

std::string plainStatus(const QuenchStatus& status, Instant now)
{
    return menuBarLabel(status, now).text() + "\n";
}

std::string barStatus(const QuenchStatus& status, Instant now)
{
    const std::string headline = displayLine(status.headline.utf8());
    const std::string detail = displayLine(status.detail.utf8());
    const nlohmann::ordered_json object = {
        {"text", escapedMarkup(menuBarLabel(status, now).text())},
        {"tooltip", escapedMarkup(headline == detail ? headline : headline + "\n" + detail)},
        {"class", rawValue(status.barTint)},
    };
    return jsonLine(object);
}

std::string i3barStatus(const QuenchStatus& status, Instant now)
{
    nlohmann::ordered_json block = {{"full_text", menuBarLabel(status, now).text()}};
    if (const std::uint32_t color = WindPalette::ofTint(status.barTint); color != WindPalette::muted)
        block["color"] = hexColor(color);
    return jsonLine(nlohmann::ordered_json::array({block}));
}

}  // namespace quenchly
