#include "state_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "test_files.h"

namespace quenchly {
namespace {

using StateFileResolver::devRepoStateDir;
using StateFileResolver::Resolution;
using testing::ScratchFolder;

namespace fs = std::filesystem;

class StateFolder : public ::testing::Test {
protected:
    void placeState(const fs::path& dataHome) { scratch.write(dataHome / "state/heat-state.json", "{}"); }

    Resolution resolve(const std::map<std::string, std::string>& env = {})
    {
        return StateFileResolver::resolve({.env = env,
                                           .homeFolder = scratch / "user",
                                           .keepsToHomeFolder = keepsToHomeFolder,
                                           .currentDirectory = cwd});
    }

    void expectChosen(const Resolution& resolution, const fs::path& dataHome)
    {
        EXPECT_EQ(resolution.dataHome, scratch / dataHome);
        EXPECT_EQ(resolution.state, scratch / dataHome / "state/heat-state.json");
    }

    std::string path(const fs::path& relative) const { return (scratch / relative).string(); }

    ScratchFolder scratch;
    fs::path cwd = scratch.makeFolder("work");
    bool keepsToHomeFolder = false;
    const fs::path standard = "user/Library/Application Support/Quenchly";
    const fs::path test = "user/Library/Application Support/Quenchly-test";
};

TEST_F(StateFolder, NothingAnywhereGivesTheDefault)
{
    expectChosen(resolve(), standard);
    expectChosen(resolve({{"QUENCHLY_HOME", path("elsewhere")}}), standard);
    cwd = fs::path();
    expectChosen(resolve(), standard);
}

TEST_F(StateFolder, AHomeFolderThatHoldsEverythingIsNotLeft)
{
    keepsToHomeFolder = true;
    placeState("work");
    placeState("elsewhere");
    placeState("user");
    placeState("user/below");
    scratch.makeLink("user/link", scratch / "elsewhere");
    scratch.makeLink("link", scratch / "user");
    for (const char* folder : {"elsewhere", "user/../elsewhere", "user/link", "user", "user/below/.."}) {
        expectChosen(resolve({{"QUENCHLY_HOME", path(folder)}}), standard);
        expectChosen(resolve({{"QUENCHLY_HOME", path(folder)}, {"QUENCHKY_HOME", path("user/below")}}), "user/below");
    }
    expectChosen(resolve({{"QUENCHLY_HOME", path("link/below")}}), "link/below");
    cwd = scratch / "user";
    expectChosen(resolve({{"QUENCHLY_HOME", "below"}}), "user/below");
    cwd = scratch / "user/below";
    expectChosen(resolve(), "user/below");
    cwd = scratch / "user/link";
    expectChosen(resolve(), standard);
}

TEST_F(StateFolder, TheFirstCandidateWithAStateFileWins)
{
    const std::map<std::string, std::string> env{{"QUENCHLY_HOME", path("env")}};
    placeState("work");
    expectChosen(resolve(env), "work");
    placeState(test);
    expectChosen(resolve(env), test);
    placeState(standard);
    expectChosen(resolve(env), standard);
    placeState("env");
    expectChosen(resolve(env), "env");
}

TEST_F(StateFolder, TheSecondVariableCountsOnlyWhileTheFirstIsAbsentOrEmpty)
{
    placeState("second");
    expectChosen(resolve({{"QUENCHKY_HOME", path("second")}}), "second");
    expectChosen(resolve({{"QUENCHLY_HOME", ""}, {"QUENCHKY_HOME", path("second")}}), "second");
    expectChosen(resolve({{"QUENCHLY_HOME", path("absent")}, {"QUENCHKY_HOME", path("second")}}), standard);
    expectChosen(resolve({{"QUENCHLY_HOME", ""}, {"QUENCHKY_HOME", ""}}), standard);
    placeState("first");
    expectChosen(resolve({{"QUENCHLY_HOME", path("first")}, {"QUENCHKY_HOME", path("second")}}), "first");
}

TEST_F(StateFolder, OtherVariablesDoNotMatter)
{
    placeState("other");
    expectChosen(resolve({{"HOME", path("other")}, {"quenchly_home", path("other")}, {"QUENCHLY", path("other")}}),
                 standard);
}

TEST_F(StateFolder, SlashesAtTheEndOfAVariableDoNotMatter)
{
    placeState("env");
    expectChosen(resolve({{"QUENCHLY_HOME", path("env") + "/"}}), "env");
    expectChosen(resolve({{"QUENCHLY_HOME", path("env") + "//"}}), "env");
}

TEST_F(StateFolder, ARelativeVariableStartsAtTheCurrentDirectory)
{
    placeState("work/env");
    expectChosen(resolve({{"QUENCHLY_HOME", "env"}}), "work/env");
}

TEST_F(StateFolder, ATildeIsAnOrdinaryName)
{
    placeState("user");
    expectChosen(resolve({{"QUENCHLY_HOME", "~"}}), standard);
    placeState("work/~");
    expectChosen(resolve({{"QUENCHLY_HOME", "~"}}), "work/~");
}

TEST_F(StateFolder, TheParentOfALinkedFolderIsWhereTheLinkLeads)
{
    placeState("real/data");
    scratch.makeFolder("real/other");
    scratch.makeLink("link", scratch / "real/other");
    const Resolution resolution = resolve({{"QUENCHLY_HOME", path("link/../data")}});
    EXPECT_TRUE(fs::equivalent(resolution.dataHome, scratch / "real/data")) << resolution.dataHome;
}

TEST_F(StateFolder, ExistenceIsEnoughForAStateFile)
{
    fs::permissions(scratch.write(test / "state/heat-state.json", ""), fs::perms::none);
    expectChosen(resolve(), test);
    scratch.makeFolder(standard / "state/heat-state.json");
    expectChosen(resolve(), standard);
    scratch.makeLink("env/state/heat-state.json", scratch / "nowhere");
    expectChosen(resolve({{"QUENCHLY_HOME", path("env")}}), standard);
}

TEST_F(StateFolder, AVariableThatNamesAFileIsPassedOver)
{
    scratch.write("file", "");
    expectChosen(resolve({{"QUENCHLY_HOME", path("file")}}), standard);
    expectChosen(resolve({{"QUENCHLY_HOME", std::string(100'000, 'x')}}), standard);
}

TEST_F(StateFolder, AWorkingCopyIsFoundUpToSixFoldersAbove)
{
    placeState("copy");
    const fs::path state = scratch / "copy/state";
    EXPECT_EQ(devRepoStateDir(scratch / "copy"), state);
    EXPECT_EQ(devRepoStateDir(scratch.makeFolder("copy/1")), state);
    EXPECT_EQ(devRepoStateDir(scratch.makeFolder("copy/1/2/3/4/5/6")), state);
    EXPECT_EQ(devRepoStateDir(scratch.makeFolder("copy/1/2/3/4/5/6/7")), std::nullopt);
    cwd = scratch / "copy/1/2/3/4/5/6";
    expectChosen(resolve(), "copy");
    cwd = scratch / "copy/1/2/3/4/5/6/7";
    expectChosen(resolve(), standard);
}

TEST_F(StateFolder, TheNearestWorkingCopyWins)
{
    placeState("copy");
    placeState("copy/1/2");
    EXPECT_EQ(devRepoStateDir(scratch.makeFolder("copy/1/2/3")), scratch / "copy/1/2/state");
    EXPECT_EQ(devRepoStateDir(scratch / "copy/1"), scratch / "copy/state");
}

TEST_F(StateFolder, AStateFolderWithoutAStateFileIsPassedOver)
{
    placeState("copy");
    scratch.makeFolder("copy/1/state");
    EXPECT_EQ(devRepoStateDir(scratch / "copy/1"), scratch / "copy/state");
}

TEST_F(StateFolder, AWorkingCopyThatOthersMayChangeIsPassedOver)
{
    placeState("outer");
    placeState("outer/copy");
    for (const char* part : {"outer/copy/state/heat-state.json", "outer/copy/state", "outer/copy"}) {
        fs::permissions(scratch / part, fs::perms::others_write, fs::perm_options::add);
        EXPECT_EQ(devRepoStateDir(scratch / "outer/copy"), scratch / "outer/state") << part;
        fs::permissions(scratch / part, fs::perms::others_write, fs::perm_options::remove);
    }
    EXPECT_EQ(devRepoStateDir(scratch / "outer/copy"), scratch / "outer/copy/state");
}

TEST_F(StateFolder, AStrangersStateInASharedFolderIsPassedOver)
{
    const auto stranger = testing::anotherUser();
    if (!stranger)
        GTEST_SKIP() << "only root can act as another user";
    fs::permissions(scratch.makeFolder("shared"), fs::perms::all | fs::perms::sticky_bit);
    cwd = scratch.makeFolder("shared/ours");
    ASSERT_TRUE(testing::runAsAnotherUser(*stranger, [&] {
        placeState("shared");
        return true;
    }));
    ASSERT_TRUE(fs::exists(scratch / "shared/state/heat-state.json"));
    expectChosen(resolve(), standard);
}

TEST_F(StateFolder, OnlyTheFolderNearTheCurrentDirectoryHasToBeSafe)
{
    for (const fs::path& dataHome : {fs::path("env"), standard}) {
        placeState(dataHome);
        fs::permissions(scratch / dataHome / "state", fs::perms::all);
        expectChosen(resolve({{"QUENCHLY_HOME", path("env")}}), dataHome);
        fs::remove_all(scratch / dataHome);
    }
}

TEST_F(StateFolder, TheWalkEndsAtTheRoot)
{
    for (const char* from : {"/", "/absent", ""})
        EXPECT_EQ(devRepoStateDir(from), std::nullopt) << from;
}

}  // namespace
}  // namespace quenchly
