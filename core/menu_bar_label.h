#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "instant.h"
#include "quench_status.h"

namespace quenchly {

/// The words beside the menu bar glyph, each one plain line, in the language in force.
struct MenuBarLabel {
    std::string statusWord;
    std::optional<std::string> metrics;
    std::optional<std::string> recency;

    /// All words in one line.
    std::string text() const;

    bool operator==(const MenuBarLabel&) const = default;
};

MenuBarLabel menuBarLabel(const QuenchStatus& status, Instant now, bool checkInFlight = false);

/// A metrics line shortened for the menu bar: "load 9.4 / 8 · swap 2.1 GB (31%)" becomes "9.4 / 8 · 2.1G".
std::string compactStripMetrics(std::string_view line);

}  // namespace quenchly
