#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "heat_state.h"
#include "instant.h"

/// Which set-aside entries are shown, and what each row is called.
namespace quenchly::QuarantineDisplay {

/// Set-aside entries older than this are no longer shown.
inline constexpr double retentionHours = 24.0;

bool isAiManagedCommand(std::string_view command);

/// Needs only "mlx" where a command needs the MLX server's full name; the checker's own agents never count.
bool isAiManagedLaunchd(std::string_view label);

bool isAiScoped(const QuarantinedEntry& entry);

/// The entries to show, in input order: not acknowledged, AI-scoped, with a readable time at most a day old.
std::vector<QuarantinedEntry> visible(const std::vector<QuarantinedEntry>& entries, Instant now);

std::string rowLabel(const QuarantinedEntry& entry);

}  // namespace quenchly::QuarantineDisplay
