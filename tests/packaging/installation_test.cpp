#include <gtest/gtest.h>

#include <QImage>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>

#include "program.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

class Installation : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder = std::make_unique<testing::ScratchFolder>();
        const ProgramRun run =
            testing::runProgram(QUENCHLY_CMAKE, {"--install", QUENCHLY_BUILD, "--prefix", folder->path()});
        ASSERT_EQ(run.exitStatus, 0) << run.errors;
    }
    static void TearDownTestSuite() { folder.reset(); }

    static std::set<std::string> files()
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder->path()))
            if (!entry.is_directory())
                names.insert(entry.path().lexically_relative(folder->path()).string());
        return names;
    }

    static inline std::unique_ptr<testing::ScratchFolder> folder;
};

TEST_F(Installation, HoldsTheProgramsTheirDescriptionsTheIconsAndNothingElse)
{
    std::set<std::string> expected{"bin/quenchly-menubar",
                                   "bin/quenchly-status",
                                   QUENCHLY_DEMO_FOLDER "/quenchly",
                                   "share/applications/quenchly.desktop",
                                   "share/icons/hicolor/scalable/apps/quenchly.svg",
                                   "share/icons/hicolor/symbolic/apps/quenchly-symbolic.svg",
                                   "share/man/man1/quenchly-menubar.1",
                                   "share/man/man1/quenchly-status.1",
                                   "share/metainfo/com.brindlemoor.quenchly.menubar.metainfo.xml"};
    for (const char* side : {"16", "22", "24", "32", "48", "64", "128", "256", "512"})
        expected.insert("share/icons/hicolor/" + std::string(side) + "x" + side + "/apps/quenchly.png");
    EXPECT_EQ(files(), expected);
}

TEST_F(Installation, EachPictureHasTheSizeOfItsFolder)
{
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const std::string name = std::to_string(side) + "x" + std::to_string(side);
        const fs::path file = *folder / ("share/icons/hicolor/" + name + "/apps/quenchly.png");
        const QImage picture(QString::fromStdString(file));
        EXPECT_EQ(picture.size(), QSize(side, side)) << name;
    }
}

TEST_F(Installation, TheDesktopEntryIsValid)
{
    if (!testing::isInstalled(QUENCHLY_DESKTOP_FILE_VALIDATE))
        GTEST_SKIP() << "desktop-file-validate is not installed";
    const ProgramRun run =
        testing::runProgram(QUENCHLY_DESKTOP_FILE_VALIDATE, {*folder / "share/applications/quenchly.desktop"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output + run.errors, "");
}

TEST_F(Installation, TheDesktopEntryStartsWhatIsInstalled)
{
    std::ifstream entry(*folder / "share/applications/quenchly.desktop");
    std::set<std::string> lines;
    for (std::string line; std::getline(entry, line);)
        lines.insert(line);
    EXPECT_TRUE(lines.contains("Exec=quenchly-menubar"));
    EXPECT_TRUE(lines.contains("Icon=quenchly"));
    EXPECT_TRUE(fs::exists(*folder / "bin/quenchly-menubar"));
}

TEST_F(Installation, TheInstalledProgramFindsTheStandIn)
{
    const testing::ScratchFolder out;
    const ProgramRun run =
        testing::runProgram(*folder / "bin/quenchly-menubar", {"--headless", out / "pictures", "--demo", "holding"});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_TRUE(fs::exists(out / "pictures/menu-bar.png"));
}

}  // namespace
}  // namespace quenchly
