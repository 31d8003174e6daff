#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "instant.h"
#include "stand_in.h"

namespace quenchly::soak {

/// The files that the application reads: those of the state folder, and the launch agent's.
inline constexpr std::array<std::string_view, 4> stateFileNames{"heat-state.json", "managed.json", "protect-mode.json",
                                                                "throttle.json"};
inline constexpr std::size_t fileCount = stateFileNames.size() + 1;
std::filesystem::path fileAt(const CheckedHome& home, std::size_t place);

/// What the stand-in checker writes in each of its situations.
class WholeFiles {
public:
    /// Plays every situation once, below `scratch`.
    explicit WholeFiles(const std::filesystem::path& scratch);

    const std::vector<std::string>& situations() const { return situations_; }

    /// The text of a file in a situation whose last check was at `lastCheck`; none where there is no such file.
    std::optional<std::string> text(const std::string& situation, std::size_t place, Instant lastCheck) const;

    /// The state file of a situation with `count` processes set aside.
    std::string textWithSetAside(const std::string& situation, std::size_t count, Instant lastCheck) const;

private:
    std::vector<std::string> situations_;
    std::map<std::string, std::array<std::optional<std::string>, fileCount>> texts_;
};

}  // namespace quenchly::soak
