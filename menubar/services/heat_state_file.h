#pragma once

#include <filesystem>
#include <optional>

#include "heat_state.h"
#include "watched_file.h"

namespace quenchly {

/// The checker's state file, read again only when it may have changed.
class HeatStateFile {
public:
    enum class Outcome {
        missing,     ///< there is no file
        unreadable,  ///< there is one that cannot be read or is too large: what was known before stands
        read,        ///< `state` holds what it says, none when it is no heat state
    };

    /// The clock is that of `WatchedFile`.
    HeatStateFile(std::filesystem::path path, std::function<Instant()> now) : file_(std::move(path), std::move(now)) {}

    Outcome refresh();

    const std::optional<HeatState>& state() const { return state_; }
    const std::filesystem::path& path() const { return file_.path(); }

private:
    static Outcome outcomeOf(const FileReading& reading);

    WatchedFile file_;
    Outcome outcome_ = Outcome::missing;
    std::optional<HeatState> state_;
};

}  // namespace quenchly
