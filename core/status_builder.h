#pragma once

#include <filesystem>
#include <optional>

#include "instant.h"
#include "quench_status.h"

/// Turns one reading of the state file and a few facts about the installation into what the menu shows.
namespace quenchly::QuenchStatusBuilder {

inline constexpr double staleAfterSeconds = 120.0;
inline constexpr std::string_view unprotectedDetail = "Protection Off. No easing, even under overload.";
/// The same sentence is shown twice on purpose.
inline constexpr std::string_view unprotectedHeadline = unprotectedDetail;

struct Reading {
    const std::optional<HeatState>& state;  ///< none when the file is unparsable
    const std::filesystem::path& dataHome;
    const std::optional<std::filesystem::path>& launchAgentsDir;  ///< none: the user's own
    Instant now;
};
/// Reads the small installation files anew; keeps no state and never fails.
QuenchStatus build(const Reading& reading);

/// Whether the last check is missing, unreadable or older than `staleAfterSeconds`, strictly. The future is not stale.
bool isStale(const HeatState& state, Instant now);

struct BarTint {
    const HeatState& state;
    QuenchIcon icon;
    bool observeOnly;
};
QuenchBarTint resolveBarTint(const BarTint& arguments);

}  // namespace quenchly::QuenchStatusBuilder
