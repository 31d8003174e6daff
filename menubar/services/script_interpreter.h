#pragma once

#include <filesystem>
#include <string>

namespace quenchly {

/// What the first line of a script, the one that begins with "#!", says about how it is run.
struct ScriptInterpreter {
    std::filesystem::path program;  ///< as it is written; empty when the line names none
    std::string name;               ///< without folders; behind "env" the program that env is to find

    /// Also of a line that names no program.
    bool isNode() const { return name.empty() || name == "node" || name == "nodejs"; }
};

/// Both parts are empty for a file that is no script or cannot be read.
ScriptInterpreter scriptInterpreter(const std::filesystem::path& script);

}  // namespace quenchly
