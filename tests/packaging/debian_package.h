#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "program.h"
#include "test_files.h"

namespace quenchly::testing {

/// Makes the Debian package of this build in a folder. An empty path, and a failed expectation, when that fails.
std::filesystem::path makeDebianPackage(const std::filesystem::path& folder);

/// An empty folder into which packages are installed as if it were the root of a system without any other package.
class PackageRoot {
public:
    PackageRoot();

    std::filesystem::path operator/(const std::filesystem::path& relative) const { return root_ / relative; }

    ProgramRun install(const std::filesystem::path& package) const;
    ProgramRun remove() const { return dpkg({"--remove", "quenchly-menubar"}); }
    ProgramRun purge() const { return dpkg({"--purge", "quenchly-menubar"}); }

    /// Every file and folder in it, relative to it.
    std::set<std::string> entries() const;
    /// What the package manager's own files still say about the package; empty when they have forgotten it.
    std::string record() const;

private:
    ProgramRun dpkg(const std::vector<std::string>& arguments) const;

    ScratchFolder root_;
    ScratchFolder administration_;
};

}  // namespace quenchly::testing
