#include "debian_package.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace quenchly::testing {
namespace {

namespace fs = std::filesystem;

QString q(const fs::path& path)
{
    return QString::fromStdString(path.string());
}

}  // namespace

fs::path makeDebianPackage(const fs::path& folder)
{
    const ProgramRun run = runProgram(QStringLiteral(QUENCHLY_CPACK),
                                      {QStringLiteral("--config"), QStringLiteral(QUENCHLY_BUILD "/CPackConfig.cmake"),
                                       QStringLiteral("-B"), q(folder)});
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

ProgramRun PackageRoot::dpkg(const QStringList& arguments) const
{
    // Machines may be set up to leave documentation out.
    const QStringList options{QStringLiteral("--instdir=") + q(root_.path()),
                              QStringLiteral("--admindir=") + q(administration_.path()),
                              QStringLiteral("--log=") + q(administration_ / "log"), QStringLiteral("--path-include=*"),
                              QStringLiteral("--force-not-root,depends,bad-path")};
    if (geteuid() == 0)
        return runProgram(QStringLiteral("dpkg"), options + arguments);
    return runProgram(QStringLiteral("fakeroot"), QStringList{QStringLiteral("dpkg")} + options + arguments);
}

ProgramRun PackageRoot::install(const fs::path& package) const
{
    return dpkg({QStringLiteral("--install"), q(package)});
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
    return record + runProgram(QStringLiteral("dpkg-query"), {QStringLiteral("--admindir=") + q(administration_.path()),
                                                              QStringLiteral("-W"), QStringLiteral("quenchly-menubar")})
                        .output;
}

}  // namespace quenchly::testing
