#pragma once

#include <sys/types.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "dice.h"

namespace quenchly::soak {

/// Processes with the names and command lines of local AI servers, which come, go, stop and go on.
class Targets {
public:
    /// Their programs lie in `folder`.
    explicit Targets(std::filesystem::path folder);
    ~Targets();
    Targets(const Targets&) = delete;
    Targets& operator=(const Targets&) = delete;

    /// Something happens to one of them.
    void change(Dice& dice);
    void endAll();

private:
    struct Target {
        std::string program;
        std::vector<std::string> arguments;
        std::optional<pid_t> process{};
    };

    std::filesystem::path folder_;
    std::vector<Target> targets_;
};

}  // namespace quenchly::soak
