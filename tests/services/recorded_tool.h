#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "descriptor.h"
#include "own_process.h"
#include "test_files.h"

namespace quenchly::testing {

/// Waits for something that another thread or process brings about; false when it never comes.
bool eventually(const std::function<bool()>& condition);

/// A program of this machine.
std::optional<std::filesystem::path> onSearchPath(const std::string& program);

/// A real tool that records how it is run.
class RecordedTool {
public:
    /// The record lies in `scratch`, which must outlive this.
    explicit RecordedTool(const ScratchFolder& scratch);

    static std::filesystem::path program();

    /// What the tool must find in its environment. Behaviours: "hang" until `release`, "fail" with exit status 1,
    /// "killed", "flood" both outputs with a gigabyte.
    std::map<std::string, std::string> environment(const std::string& behaviour = {}) const;

    /// "start" and "end" of all runs in the order in which they happened.
    std::vector<nlohmann::json> events() const;
    /// The arguments of each run that has started.
    std::vector<std::vector<std::string>> runs() const;
    bool hasStarted() const;
    bool hasEnded() const;

    /// Lets one hanging run go on, now or when it gets there. All of them go on when this is destroyed.
    void release() const;

private:
    std::filesystem::path record_;
    std::filesystem::path gate_;
    Descriptor gateReader_;  ///< keeps what `release` writes until a run takes it
    Descriptor gateWriter_;
};

}  // namespace quenchly::testing
