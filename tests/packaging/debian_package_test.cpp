#include "debian_package.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <map>
#include <memory>
#include <sstream>

#include "login_item.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::PackageRoot;
using testing::ProgramRun;
using testing::ScratchFolder;

constexpr const char* autostartEntry = "etc/xdg/autostart/quenchly.desktop";

std::string valueIn(const fs::path& desktopEntry, const std::string& key)
{
    std::ifstream entry(desktopEntry);
    for (std::string line; std::getline(entry, line);)
        if (line.starts_with(key + "="))
            return line.substr(key.size() + 1);
    return {};
}

/// Made by somebody whose files are for nobody else.
fs::path packageMadeIn(const fs::path& folder)
{
    const mode_t usual = umask(0077);
    const fs::path package = testing::makeDebianPackage(folder);
    umask(usual);
    return package;
}

class DebianPackage : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder = std::make_unique<ScratchFolder>();
        package = packageMadeIn(folder->path());
    }
    static void TearDownTestSuite() { folder.reset(); }

    void SetUp() override { ASSERT_FALSE(package.empty()); }

    static std::string field(const char* name)
    {
        std::string text = testing::runProgram("dpkg-deb", {"--field", package, name}).output;
        return text.substr(0, text.find_last_not_of('\n') + 1);
    }

    static void installInto(const PackageRoot& root)
    {
        const ProgramRun run = root.install(package);
        ASSERT_EQ(run.exitStatus, 0) << run.output << run.errors;
    }

    static inline std::unique_ptr<ScratchFolder> folder;
    static inline fs::path package;
};

TEST_F(DebianPackage, IntroducesItself)
{
    EXPECT_EQ(field("Package"), "quenchly-menubar");
    EXPECT_EQ(field("Version"), QUENCHLY_VERSION);
    EXPECT_EQ(field("Maintainer"), QUENCHLY_VENDOR_NAME " <" QUENCHLY_SUPPORT_ADDRESS ">");
    EXPECT_EQ(field("Homepage"), "https://" QUENCHLY_VENDOR_HOST "/quenchly/");
    EXPECT_EQ(field("Section"), "utils");
    EXPECT_EQ(package.filename(), "quenchly-menubar_" QUENCHLY_VERSION "_" + field("Architecture") + ".deb");
    EXPECT_EQ(field("Description").find("menu bar status of a machine that runs local AI models\n The Quenchly"), 0);
    EXPECT_GT(std::stoi(field("Installed-Size")), 100);
}

TEST_F(DebianPackage, NeedsTheLibrariesOfTheProgramsAndNothingToBuildThem)
{
    const std::string needed = field("Depends");
    for (const char* library : {"libc6 ", "libqt6widgets6", "libqt6dbus6", "libre2-", "libutf8proc", "libxcb1"})
        EXPECT_NE(needed.find(library), std::string::npos) << library << " is not in " << needed;
    EXPECT_EQ(needed.find("-dev"), std::string::npos) << needed;
    EXPECT_NE(field("Recommends").find("xdg-utils"), std::string::npos);
}

TEST_F(DebianPackage, HoldsWhatAnInstallationHoldsTheAutostartEntryAndDebiansDocuments)
{
    const ScratchFolder plain;
    const ProgramRun run = testing::runProgram(QUENCHLY_CMAKE, {"--install", QUENCHLY_BUILD, "--prefix", plain.path()});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    std::set<std::string> expected{autostartEntry, "usr/share/doc/quenchly-menubar/changelog.gz",
                                   "usr/share/doc/quenchly-menubar/copyright"};
    for (const auto& entry : fs::recursive_directory_iterator(plain.path()))
        if (!entry.is_directory())
            expected.insert("usr/" + entry.path().lexically_relative(plain.path()).string() +
                            (entry.path().extension() == ".1" ? ".gz" : ""));

    const PackageRoot root;
    installInto(root);
    std::set<std::string> files = root.entries();
    std::erase_if(files, [&](const std::string& name) { return fs::is_directory(root / name); });
    EXPECT_EQ(files, expected);
}

TEST_F(DebianPackage, LetsEverybodyReadEverythingAndRunThePrograms)
{
    const std::string listing = testing::runProgram("dpkg-deb", {"--contents", package}).output;
    std::map<std::string, int> kinds;
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);)
        ++kinds[line.substr(0, std::string("drwxr-xr-x root/root").size())];
    EXPECT_EQ(kinds["-rwxr-xr-x root/root"], 3) << listing;
    EXPECT_GT(kinds["-rw-r--r-- root/root"], 10) << listing;
    EXPECT_GT(kinds["drwxr-xr-x root/root"], 10) << listing;
    EXPECT_EQ(kinds.size(), 3) << listing;
}

TEST_F(DebianPackage, IsTheSameToTheByteWhenMadeAgain)
{
    const ScratchFolder elsewhere;
    const fs::path again = packageMadeIn(elsewhere.path());
    ASSERT_FALSE(again.empty());
    EXPECT_TRUE(testing::contentOf(again) == testing::contentOf(package));
}

TEST_F(DebianPackage, KeepsToDebiansRules)
{
    if (!testing::isInstalled(QUENCHLY_LINTIAN))
        GTEST_SKIP() << "lintian is not installed";
    const ProgramRun run =
        testing::runProgram(QUENCHLY_LINTIAN, {"--allow-root", "--fail-on", "error,warning", package});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(run.output, "");
}

TEST_F(DebianPackage, RunsFromWhereItIsInstalled)
{
    const PackageRoot root;
    installInto(root);
    const ProgramRun version = testing::runProgram(root / "usr/bin/quenchly-menubar", {"--version"});
    EXPECT_EQ(version.output, "quenchly-menubar " QUENCHLY_VERSION "\n");

    const ScratchFolder home;
    const ProgramRun status = testing::runProgram(root / "usr/bin/quenchly-status", {"--home", home.path()});
    EXPECT_EQ(status.exitStatus, 0);
    EXPECT_NE(status.output, "");

    const ProgramRun pictures =
        testing::runProgram(root / "usr/bin/quenchly-menubar", {"--headless", home / "pictures", "--demo", "holding"});
    EXPECT_EQ(pictures.exitStatus, 0) << pictures.errors;
    for (const char* name : {"menu-bar.png", "panel.png", "status.json"})
        EXPECT_TRUE(fs::exists(home / "pictures" / name)) << name;
}

TEST_F(DebianPackage, StartsAtLoginWithTheEntryThatAUsersOwnReplaces)
{
    const PackageRoot root;
    installInto(root);
    const fs::path entry = root / autostartEntry;
    EXPECT_EQ(valueIn(entry, "Exec"), valueIn(entry, "TryExec"));
    EXPECT_TRUE(fs::exists(root / valueIn(entry, "TryExec").substr(1)));
    EXPECT_EQ(valueIn(entry, "Icon"), valueIn(root / "usr/share/applications/quenchly.desktop", "Icon"));

    const ScratchFolder settings;
    const auto item = makeLoginItem({.settingsFolder = settings.path(),
                                     .systemSettingsFolders = {root / "etc/xdg"},
                                     .executable = "/usr/bin/quenchly-menubar"});
    EXPECT_EQ(item->unregisterItem(), "");
    EXPECT_EQ(item->status(), LoginItem::Status::requiresApproval);
    EXPECT_TRUE(fs::exists(settings / "autostart" / entry.filename()));

    if (!testing::isInstalled(QUENCHLY_DESKTOP_FILE_VALIDATE))
        GTEST_SKIP() << "desktop-file-validate is not installed";
    const ProgramRun run = testing::runProgram(QUENCHLY_DESKTOP_FILE_VALIDATE, {entry});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output + run.errors, "");
}

TEST_F(DebianPackage, RemovedLeavesNothingButTheAutostartEntryWhichThenStartsNothing)
{
    const PackageRoot root;
    installInto(root);
    const std::string program = valueIn(root / autostartEntry, "TryExec");
    ASSERT_EQ(root.remove().exitStatus, 0);
    EXPECT_EQ(root.entries(), (std::set<std::string>{"etc", "etc/xdg", "etc/xdg/autostart", autostartEntry}));
    EXPECT_FALSE(fs::exists(root / program.substr(1)));
}

TEST_F(DebianPackage, PurgedLeavesNothing)
{
    const PackageRoot root;
    const std::set<std::string> before = root.entries();
    installInto(root);
    EXPECT_NE(root.entries(), before);
    EXPECT_NE(root.record(), "");
    ASSERT_EQ(root.purge().exitStatus, 0);
    EXPECT_EQ(root.entries(), before);
    EXPECT_EQ(root.record(), "");
}

}  // namespace
}  // namespace quenchly
