#include "folder_removal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "test_files.h"
#include "user_home.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

class FolderRemovalTest : public ::testing::Test {
protected:
    testing::ScratchFolder scratch;
    fs::path home = scratch.makeFolder("home/ann");

    std::optional<RemovalRefusal> refusal(const fs::path& folder) const { return refusalToRemove(folder, home); }
};

TEST_F(FolderRemovalTest, AFolderOfOnesOwnMayGo)
{
    EXPECT_EQ(refusal(scratch.makeFolder("home/ann/data")), std::nullopt);
    EXPECT_EQ(refusal(scratch.makeLink("link", home / "data")), std::nullopt);
    EXPECT_EQ(refusal(home / "data/missing"), std::nullopt);
}

TEST_F(FolderRemovalTest, TheRootAndHomeFoldersStay)
{
    EXPECT_EQ(refusal("/"), RemovalRefusal::root);
    EXPECT_EQ(refusal("/usr/.."), RemovalRefusal::root);
    EXPECT_EQ(refusal(scratch.makeLink("to root", "/")), RemovalRefusal::root);
    const fs::path link = scratch.makeLink("to home", home);
    for (const fs::path& folder : {home, home / ".", home / "..", scratch.path(), scratch / "home", link})
        EXPECT_EQ(refusal(folder), RemovalRefusal::homeFolder) << folder;
    EXPECT_EQ(refusal(userHomeFolder() / "."),
              userHomeFolder() == "/" ? RemovalRefusal::root : RemovalRefusal::homeFolder);
    EXPECT_EQ(refusalToRemove(home, link), RemovalRefusal::homeFolder);
}

TEST_F(FolderRemovalTest, WhatIsNoFolderStays)
{
    EXPECT_EQ(refusal(scratch.write("file", "")), RemovalRefusal::notAFolder);
    EXPECT_EQ(refusal(scratch.makeLink("to file", scratch / "file")), RemovalRefusal::notAFolder);
    EXPECT_EQ(refusal(scratch.makeLink("to nothing", scratch / "nothing")), RemovalRefusal::notAFolder);
    EXPECT_EQ(refusal(scratch.makeFifo("fifo")), RemovalRefusal::notAFolder);
}

#ifdef __linux__
TEST_F(FolderRemovalTest, AMountPointStays)
{
    EXPECT_EQ(refusal("/proc"), RemovalRefusal::mountPoint);
    EXPECT_EQ(refusal(scratch.makeLink("to proc", "/proc")), RemovalRefusal::mountPoint);
}
#endif

TEST_F(FolderRemovalTest, AFolderOfAnotherUserStays)
{
    fs::path strange = "/usr/share";
    if (geteuid() == 0) {
        strange = scratch.makeFolder("strange");
        ASSERT_EQ(chown(strange.c_str(), 1, 1), 0);
    }
    EXPECT_EQ(refusal(strange), RemovalRefusal::otherOwner);
    EXPECT_EQ(refusal(scratch.makeLink("to strange", strange)), RemovalRefusal::otherOwner);
}

}  // namespace
}  // namespace quenchly
