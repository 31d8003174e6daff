#include "menu_bar_label.h"

#include <utility>

#include "protect_lockup.h"
#include "recency_copy.h"
#include "text.h"

namespace quenchly {
namespace {

constexpr std::string_view middleDot = "·";

/// A metrics line comes from a file; longer ones would push everything else out of the menu bar.
constexpr std::size_t maxMetricsCharacters = 40;

std::string loadPiece(std::string_view piece)
{
    return std::string(trimmedBlanks(replacingAll(trimmedBlanks(piece), "load ", "")));
}

std::string swapPiece(std::string_view piece)
{
    const std::string figures(trimmedBlanks(replacingAll(trimmedBlanks(piece), "swap ", "")));
    const std::string_view used = trimmedBlanks(std::string_view(figures).substr(0, figures.find('(')));
    return replacingAll(replacingAll(used, " GB", "G"), " MB", "M");
}

std::optional<std::string> nonEmpty(std::string text)
{
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

std::string MenuBarLabel::text() const
{
    std::string line = statusWord;
    for (const auto* word : {&metrics, &recency})
        if (*word)
            line += "  " + **word;
    return line;
}

MenuBarLabel menuBarLabel(const QuenchStatus& status, Instant now, bool checkInFlight)
{
    MenuBarLabel label;
    label.statusWord =
        ProtectLockup::extra({.protectOn = !status.managementDisabled, .agentInstalled = status.agentInstalled});
    if (status.metricsLine)
        label.metrics = nonEmpty(displayLine(compactStripMetrics(status.metricsLine->utf8()), maxMetricsCharacters));
    label.recency = RecencyCopy::extraLine({.ageSeconds = RecencyCopy::ageSeconds(status.lastCheckISO, now),
                                            .iconStale = status.icon == QuenchIcon::stale,
                                            .inFlight = checkInFlight});
    return label;
}

std::string compactStripMetrics(std::string_view line)
{
    const auto dot = line.find(middleDot);
    std::string_view first = line.substr(0, dot);
    std::string_view second = dot == std::string_view::npos ? std::string_view() : line.substr(dot + middleDot.size());
    if (first.empty())
        std::swap(first, second);
    if (first.empty())
        return std::string(line);
    if (second.empty())
        return loadPiece(first);
    return loadPiece(first) + " · " + swapPiece(second);
}

}  // namespace quenchly
