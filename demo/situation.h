#pragma once

#include <optional>
#include <string>
#include <vector>

#include "instant.h"
#include "state_files.h"

namespace quenchly::demo {

/// A line of one of the dashboard's lists.
struct SituationEntry {
    std::string name;
    std::string note;
};

/// What the files say, in the words of the dashboard.
struct Situation {
    std::string headline;
    std::string tone;  ///< calm, watch, hold, off
    std::string protection;
    std::string lastCheck;
    std::optional<double> loadPercent;
    std::optional<double> swapPercent;
    std::string memoryReliefTip;
    std::vector<SituationEntry> held = {};
    std::vector<SituationEntry> slowed = {};
    std::vector<SituationEntry> setAside = {};  ///< what nobody has acknowledged yet
};

/// Reads a data folder. Missing and unusable files and values are left out.
Situation readSituation(const StateFiles& files, Instant now);

}  // namespace quenchly::demo
