#include "trusted_path.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

constexpr fs::perms openToAll = fs::perms::all;
constexpr fs::perms sharedLikeTmp = fs::perms::all | fs::perms::sticky_bit;

class TrustedPathTest : public ::testing::Test {
protected:
    void giveTo(uid_t user, const fs::path& path) const { ASSERT_EQ(lchown(path.c_str(), user, gid_t(-1)), 0); }

    testing::ScratchFolder scratch;
    fs::path file = scratch.write("copy/dist/tool", "");
};

TEST_F(TrustedPathTest, OnesOwnFileInOnesOwnFoldersIsTrusted)
{
    EXPECT_TRUE(onlyUserCanChange(file));
    EXPECT_TRUE(onlyUserCanChange(scratch / "copy"));
    EXPECT_TRUE(onlyUserCanChange(scratch / "copy", "dist/tool"));
    EXPECT_TRUE(onlyUserCanChange((scratch / "copy/").string() + "/./dist/../dist/tool"));
    EXPECT_TRUE(onlyUserCanChange("/"));
}

TEST_F(TrustedPathTest, WhatIsNotThereOrNotAbsoluteIsNot)
{
    EXPECT_FALSE(onlyUserCanChange(scratch / "missing"));
    EXPECT_FALSE(onlyUserCanChange(scratch / "copy", "dist/missing"));
    EXPECT_FALSE(onlyUserCanChange(file / "below"));
    EXPECT_FALSE(onlyUserCanChange(""));
    EXPECT_FALSE(onlyUserCanChange("usr/bin"));
}

TEST_F(TrustedPathTest, AFileOrFolderThatGroupOrOthersMayWriteIsNot)
{
    for (const fs::path& part : {file, file.parent_path(), scratch / "copy", scratch.path()}) {
        for (const fs::perms more : {fs::perms::group_write, fs::perms::others_write}) {
            fs::permissions(part, more, fs::perm_options::add);
            EXPECT_FALSE(onlyUserCanChange(file)) << part;
            EXPECT_FALSE(onlyUserCanChange(scratch / "copy", "dist/tool")) << part;
            fs::permissions(part, more, fs::perm_options::remove);
        }
    }
    EXPECT_TRUE(onlyUserCanChange(file));
}

TEST_F(TrustedPathTest, AFolderLikeTmpIsBearableAboveButNotAsTheFolderItself)
{
    fs::permissions(scratch.path(), sharedLikeTmp);
    EXPECT_TRUE(onlyUserCanChange(scratch / "copy", "dist/tool"));
    EXPECT_FALSE(onlyUserCanChange(scratch.path()));
    EXPECT_FALSE(onlyUserCanChange(scratch.path(), "copy/dist/tool"));
}

TEST_F(TrustedPathTest, ALinkIsAsGoodAsWhatItLeadsTo)
{
    const fs::path link = scratch.makeLink("links/link", "../links/second");
    scratch.makeLink("links/second", file);
    EXPECT_TRUE(onlyUserCanChange(link));
    EXPECT_TRUE(onlyUserCanChange(scratch.makeLink("folder", scratch / "copy"), "dist/tool"));
    fs::permissions(scratch / "copy", openToAll);
    EXPECT_FALSE(onlyUserCanChange(link));
    EXPECT_FALSE(onlyUserCanChange(scratch / "folder", "dist/tool"));
    fs::permissions(scratch / "copy", fs::perms::owner_all);
    fs::permissions(scratch / "links", openToAll);
    EXPECT_FALSE(onlyUserCanChange(link)) << "the link itself can be replaced";
}

TEST_F(TrustedPathTest, ALinkOnTheWayThroughASharedFolderIsNotTrusted)
{
    scratch.makeLink("shared/way", scratch / "copy");
    const fs::path link = scratch.makeLink("link", scratch / "shared/way/dist/tool");
    EXPECT_TRUE(onlyUserCanChange(link));
    fs::permissions(scratch / "shared", openToAll);
    EXPECT_FALSE(onlyUserCanChange(link));
}

TEST_F(TrustedPathTest, LinksInACircleEnd)
{
    scratch.makeLink("one", "two");
    EXPECT_FALSE(onlyUserCanChange(scratch.makeLink("two", "one")));
}

TEST_F(TrustedPathTest, WhatRootOwnsIsTrustedByEverybody)
{
    const testing::OrdinaryUser user;
    EXPECT_TRUE(onlyUserCanChange("/usr", "bin/env"));
}

TEST_F(TrustedPathTest, WhatAnotherUserOwnsIsNot)
{
    const auto stranger = testing::anotherUser();
    if (!stranger)
        GTEST_SKIP() << "only root can give files to another user";
    const fs::path link = scratch.makeLink("copy/link", "dist/tool");
    for (const fs::path& part : {file, file.parent_path(), scratch / "copy", scratch.path()}) {
        giveTo(*stranger, part);
        EXPECT_FALSE(onlyUserCanChange(file)) << part;
        giveTo(0, part);
    }
    EXPECT_TRUE(onlyUserCanChange(link));
    giveTo(*stranger, link);
    EXPECT_FALSE(onlyUserCanChange(link));
}

TEST_F(TrustedPathTest, WhatIsTheOrdinaryUsersOwnIsTrustedByThem)
{
    const auto other = testing::anotherUser();
    if (!other)
        GTEST_SKIP() << "only root can give files to another user";
    for (const fs::path& part : {file, file.parent_path(), scratch / "copy"})
        giveTo(*other, part);
    const testing::OrdinaryUser user;
    EXPECT_TRUE(onlyUserCanChange(scratch / "copy", "dist/tool"));
}

}  // namespace
}  // namespace quenchly
