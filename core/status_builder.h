#pragma once

#include <optional>

#include "instant.h"
#include "observe_only.h"
#include "quench_status.h"

/// Turns one reading of the state file and a few facts about the installation into what the menu shows.
namespace quenchly::QuenchStatusBuilder {

inline constexpr double staleAfterSeconds = 120.0;
inline constexpr std::string_view unprotectedDetail = "Protection Off. No easing, even under overload.";
/// The same sentence is shown twice on purpose.
inline constexpr std::string_view unprotectedHeadline = unprotectedDetail;

/// `state` is none when the file is unparsable. Reads the small installation files anew; keeps no state and never
/// fails.
QuenchStatus build(const std::optional<HeatState>& state, const ObserveOnly::Folders& folders, Instant now);

/// Whether the last check is missing, unreadable or older than `staleAfterSeconds`, strictly. The future is not stale.
bool isStale(const HeatState& state, Instant now);

QuenchBarTint resolveBarTint(const HeatState& state, QuenchIcon icon, bool observeOnly);

}  // namespace quenchly::QuenchStatusBuilder
