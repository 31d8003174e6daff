#include "debian_package.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace quenchly::testing {
namespace {

namespace fs = std::filesystem;

}  // namespace

fs::path makeDebianPackage(const fs::path& folder)
{
    const ProgramRun run = runProgram(QUENCHLY_CPACK, {"--config", QUENCHLY_BUILD "/CPackConfig.cmake", "-B", folder});
    EXPECT_EQ(run.exitStatus, 0) << run.output << run.errors;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".deb")
            return entry.path();
    ADD_FAILURE() << "no package in " << folder;
    return {};
}

PackageRoot::PackageRoot()
{
    for (const char* folder : {"info", "updates", "triggers"})
        administration_.makeFolder(folder);
    administration_.write("status", "");
}

ProgramRun PackageRoot::dpkg(const std::vector<std::string>& arguments) const
{
    // Machines may be set up to leave documentation out.
    std::vector<std::string> words{"dpkg",
                                   "--instdir=" + root_.path().string(),
                                   "--admindir=" + administration_.path().string(),
                                   "--log=" + (administration_ / "log").string(),
                                   "--path-include=*",
                                   "--force-not-root,depends,bad-path"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runProgram(geteuid() == 0 ? "env" : "fakeroot", words);
}

ProgramRun PackageRoot::install(const fs::path& package) const
{
    return dpkg({"--install", package});
}

std::set<std::string> PackageRoot::entries() const
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root_.path()))
        names.insert(entry.path().lexically_relative(root_.path()).string());
    return names;
}

std::string PackageRoot::record() const
{
    std::string record;
    for (const auto& entry : fs::directory_iterator(administration_ / "info"))
        if (entry.path().filename().string().starts_with("quenchly"))
            record += entry.path().filename().string() + "\n";
    return record +
           runProgram("dpkg-query", {"--admindir=" + administration_.path().string(), "-W", "quenchly-menubar"}).output;
}

}  // namespace quenchly::testing
