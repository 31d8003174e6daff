#pragma once

#include <filesystem>
#include <optional>

#include "file_reading.h"
#include "system.h"
#include "tool_availability.h"

namespace quenchly {

/// The tool as it was last found, and whether it can be run.
class ToolPresence {
public:
    /// Cheap enough for every refresh: as long as what was found is there and unchanged, the places before it get no
    /// look.
    void refresh(const System& system);

    bool isFound() const { return tool_.has_value(); }
    ToolAvailability availability() const { return availability_; }

private:
    bool stands() const;

    std::optional<std::filesystem::path> tool_;
    std::optional<FileStamp> stamp_;
    std::optional<std::filesystem::path> runtime_;  ///< what runs the tool, if it does not run by itself
    ToolAvailability availability_ = ToolAvailability::toolNotFound;
};

}  // namespace quenchly
