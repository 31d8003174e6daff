#include "path_below.h"

#include <gtest/gtest.h>

#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

class PathBelowTest : public ::testing::Test {
protected:
    testing::ScratchFolder scratch;
    fs::path home = scratch.makeFolder("home");
};

TEST_F(PathBelowTest, APathLeadsWhereItsLinksLead)
{
    scratch.makeFolder("home/a/b");
    scratch.makeLink("to a", "home/a");
    scratch.makeLink("home/to nothing", scratch / "not there/yet");
    scratch.makeLink("home/round", "round");
    EXPECT_EQ(withoutLinks(scratch / "to a/b"), home / "a/b");
    EXPECT_EQ(withoutLinks(scratch / "to a/../c"), home / "c") << "not the folder of the link";
    EXPECT_EQ(withoutLinks(scratch / "to a/./missing/../x/"), home / "a/x");
    EXPECT_EQ(withoutLinks(home / "to nothing/c"), scratch / "not there/yet/c");
    EXPECT_EQ(withoutLinks(home / "round/c").filename(), "c");
    EXPECT_EQ(withoutLinks("/../.."), "/");
    EXPECT_EQ(withoutLinks("/"), "/");
}

TEST_F(PathBelowTest, ThePlaceOfALinkIsItsOwn)
{
    const fs::path link = scratch.makeLink("link", home);
    EXPECT_EQ(placeOf(link), link);
    EXPECT_EQ(placeOf(link / "a"), home / "a");
    EXPECT_EQ(placeOf(link / ".."), scratch.path());
    EXPECT_EQ(placeOf(link / ""), home);
}

TEST_F(PathBelowTest, OnlyWhatLeadsBelowAFolderIsBelow)
{
    scratch.makeLink("link", home);
    scratch.makeLink("home/out", scratch.path());
    EXPECT_TRUE(leadsBelow(home, home / "a"));
    EXPECT_TRUE(leadsBelow(scratch / "link", home / "a/../b"));
    EXPECT_TRUE(leadsBelow(home, scratch / "link/a"));
    for (const char* path : {"home", "home/.", "home/a/..", "home/..", "home2", "home/out/x", "", "link"})
        EXPECT_FALSE(leadsBelow(home, scratch / path)) << path;
}

}  // namespace
}  // namespace quenchly
