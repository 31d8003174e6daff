#pragma once

#include <span>

#include "l10n.h"

/// The compiled-in tables: the same keys in the same order in each.
namespace quenchly::L10n::Tables {

extern const std::span<const Entry> en;
extern const std::span<const Entry> ja;
extern const std::span<const Entry> tl;
extern const std::span<const Entry> zhHans;
extern const std::span<const Entry> zhHant;
extern const std::span<const Entry> ko;

}  // namespace quenchly::L10n::Tables
