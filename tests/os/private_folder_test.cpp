#include "private_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

TEST(PrivateFolder, IsMadeForThisUserAlone)
{
    const testing::ScratchFolder scratch;
    const mode_t before = umask(0);
    EXPECT_TRUE(makePrivateFolder(scratch / "folder"));
    umask(before);
    EXPECT_EQ(fs::status(scratch / "folder").permissions(), fs::perms::owner_all);
    EXPECT_TRUE(makePrivateFolder(scratch / "folder")) << "it is there already";
    EXPECT_FALSE(makePrivateFolder(scratch / "missing/folder"));
}

TEST(PrivateFolder, IsNoneThatOthersMayEnterNorALinkNorAFile)
{
    const testing::ScratchFolder scratch;
    const fs::path folder = scratch.makeFolder("folder");
    for (const unsigned mode : {0755U, 0750U, 0710U, 0701U, 01700U | 07U, 0500U}) {
        fs::permissions(folder, fs::perms(mode));
        EXPECT_FALSE(isPrivateFolder(folder)) << mode;
        EXPECT_FALSE(makePrivateFolder(folder)) << mode;
    }
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_TRUE(isPrivateFolder(folder));
    EXPECT_FALSE(makePrivateFolder(scratch.makeLink("link", folder)));
    EXPECT_FALSE(makePrivateFolder(scratch.write("file", "")));
    EXPECT_FALSE(isPrivateFolder(scratch / "missing"));
}

TEST(PrivateFolder, IsNotAnotherUsers)
{
    const auto stranger = testing::anotherUser();
    if (!stranger)
        GTEST_SKIP() << "only root can give files to another user";
    const testing::ScratchFolder scratch;
    ASSERT_TRUE(makePrivateFolder(scratch / "folder"));
    ASSERT_EQ(chown((scratch / "folder").c_str(), *stranger, gid_t(-1)), 0);
    EXPECT_FALSE(makePrivateFolder(scratch / "folder"));
}

}  // namespace
}  // namespace quenchly
