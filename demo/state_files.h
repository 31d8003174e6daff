#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "checker_contract.h"
#include "descriptor.h"
#include "file_changes.h"

namespace quenchly::demo {

/// Keeps the keys in the order in which they were written, as a person reads them.
using Json = nlohmann::ordered_json;

/// The checker's files in a data folder.
class StateFiles {
public:
    explicit StateFiles(const std::filesystem::path& dataHome) : folder_(dataHome / CheckerContract::stateFolder) {}

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path heatState() const { return folder_ / CheckerContract::heatStateFile; }
    std::filesystem::path managed() const { return folder_ / CheckerContract::managedFile; }
    std::filesystem::path protectMode() const { return folder_ / CheckerContract::protectModeFile; }
    std::filesystem::path throttle() const { return folder_ / CheckerContract::throttleFile; }
    /// There while a tour goes on.
    std::filesystem::path tour() const { return folder_ / "tour.json"; }

private:
    std::filesystem::path folder_;
};

/// The object that a file holds; none when the file is missing, too long, not JSON or holds something else. What is
/// nested absurdly deep is left out.
std::optional<Json> readObject(const std::filesystem::path& path);

/// The text of an object as it is stored.
FileWrite storing(const Json& object, std::filesystem::path path);

/// How `throttle.json` reads when nothing is slowed.
Json idleThrottle();

/// Lets one command at a time change the files of a folder, so that none loses what another one wrote. The folder
/// itself is locked, which leaves no lock file behind; while there is no folder there is nothing to lose.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder);

private:
    Descriptor descriptor_;
};

}  // namespace quenchly::demo
