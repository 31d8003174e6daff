#include <gtest/gtest.h>

#include "login_item.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using Status = LoginItem::Status;

class AutostartTest : public ::testing::Test {
protected:
    testing::ScratchFolder scratch;
    fs::path entry = scratch / "own/autostart/quenchly.desktop";
    fs::path systemEntry = scratch / "system/autostart/quenchly.desktop";
    fs::path program = executable("bin/quenchly-menubar");

    fs::path executable(const std::string& name) const
    {
        scratch.write(name, "#!/bin/sh\n");
        fs::permissions(scratch / name, fs::perms::owner_all);
        return scratch / name;
    }

    std::unique_ptr<LoginItem> itemFor(const fs::path& executable) const
    {
        return makeLoginItem({.settingsFolder = scratch / "own",
                              .systemSettingsFolders = {scratch / "nothing", scratch / "system"},
                              .executable = executable});
    }

    std::unique_ptr<LoginItem> item() const { return itemFor(program); }

    void writeOwn(const std::string& text) const { scratch.write("own/autostart/quenchly.desktop", text); }
    void writeSystems(const std::string& text) const { scratch.write("system/autostart/quenchly.desktop", text); }
};

TEST_F(AutostartTest, RegisteringWritesAnEntryThatStartsTheProgram)
{
    EXPECT_EQ(item()->status(), Status::notRegistered);
    EXPECT_EQ(item()->registerItem(), "");
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_EQ(testing::contentOf(entry), "[Desktop Entry]\nType=Application\nName=Quenchly\nExec=\"" +
                                             program.string() + "\"\nTryExec=" + program.string() +
                                             "\nIcon=quenchly\nTerminal=false\n");
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_EQ(item()->status(), Status::notRegistered);
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(AutostartTest, SpecialCharactersOfThePathAreEscaped)
{
    ASSERT_EQ(itemFor("/a b/100%/$x\"y\\z`")->registerItem(), "");
    EXPECT_NE(testing::contentOf(entry).find(R"(Exec="/a b/100%%/\\$x\\"y\\\\z\\`")"), std::string::npos)
        << testing::contentOf(entry);
    EXPECT_NE(testing::contentOf(entry).find(R"(TryExec=/a b/100%/$x"y\\z`)"), std::string::npos)
        << testing::contentOf(entry);
}

TEST_F(AutostartTest, APercentSignOfThePathStandsForItself)
{
    const fs::path strange = executable("%1 %f %%/100%");
    ASSERT_EQ(itemFor(strange)->registerItem(), "");
    EXPECT_EQ(itemFor(strange)->status(), Status::enabled);
    const std::string folder = scratch.path().string();
    EXPECT_EQ(testing::contentOf(entry), "[Desktop Entry]\nType=Application\nName=Quenchly\nExec=\"" + folder +
                                             "/%%1 %%f %%%%/100%%\"\nTryExec=" + strange.string() +
                                             "\nIcon=quenchly\nTerminal=false\n");
}

TEST_F(AutostartTest, APathWithALineBreakIsRefusedWithAReason)
{
    for (const char* path : {"a\nHidden=false\nb/quenchly", "a\rb/quenchly"}) {
        const auto strange = itemFor(executable(path));
        EXPECT_NE(strange->registerItem().find("line break"), std::string::npos);
        EXPECT_FALSE(fs::exists(entry));
        EXPECT_EQ(strange->status(), Status::notRegistered);
    }
}

TEST_F(AutostartTest, APathWithALineBreakAddsNoLineToTheEntryThatSwitchesOff)
{
    writeSystems("[Desktop Entry]\nExec=true\n");
    const auto strange = itemFor(executable("a\nHidden=false\nb/quenchly"));
    EXPECT_EQ(strange->unregisterItem(), "");
    EXPECT_EQ(strange->status(), Status::requiresApproval);
    EXPECT_EQ(testing::contentOf(entry).find("\nHidden=false"), std::string::npos) << testing::contentOf(entry);
    const std::string switchedOff = testing::contentOf(entry);
    strange->requestApproval();
    EXPECT_EQ(testing::contentOf(entry), switchedOff) << "nothing can be written that starts it";
}

TEST_F(AutostartTest, AProgramWithSpecialCharactersInItsPathIsFoundAgain)
{
    const auto strange = itemFor(executable("a b\\s 100% $x\"y/quenchly"));
    ASSERT_EQ(strange->registerItem(), "");
    EXPECT_EQ(strange->status(), Status::enabled);
}

TEST_F(AutostartTest, AnEntryThatTheUserSwitchedOffRequiresApproval)
{
    for (const char* line : {"Hidden=true", "Hidden = true ", "X-GNOME-Autostart-enabled=false"}) {
        const std::string text = "[Desktop Entry]\nType=Application\nExec=true\n" + std::string(line) + "\n";
        writeOwn(text);
        EXPECT_EQ(item()->status(), Status::requiresApproval) << line;
        EXPECT_NE(item()->registerItem(), "") << "registering must not overrule the user";
        EXPECT_EQ(testing::contentOf(entry), text);
        item()->requestApproval();
        EXPECT_EQ(item()->status(), Status::enabled) << line;
    }
}

TEST_F(AutostartTest, ASwitchOfAnotherGroupDoesNotCount)
{
    writeOwn("[Desktop Entry]\nExec=true\n[Desktop Action x]\nHidden=true\n");
    EXPECT_EQ(item()->status(), Status::enabled);
}

TEST_F(AutostartTest, AnEntryThatNamesNoProgramCountsAsSwitchedOff)
{
    for (const char* text : {"", "[Desktop Entry]\nName=Quenchly\n", "Exec=true\n"}) {
        writeOwn(text);
        EXPECT_EQ(item()->status(), Status::requiresApproval) << text;
        item()->requestApproval();
        EXPECT_EQ(item()->status(), Status::enabled) << text;
    }
}

TEST_F(AutostartTest, WhatIsNoFileIsNotReadAndStartsNothing)
{
    fs::create_directories(entry.parent_path());
    fs::create_symlink("/dev/null", entry);
    EXPECT_EQ(item()->status(), Status::requiresApproval);
    EXPECT_NE(item()->registerItem(), "");
}

TEST_F(AutostartTest, WhatTheUserEditedOutlivesSwitchingOffAndOn)
{
    const std::string edited =
        "# mine\n[Desktop Entry]\nExec=env A=b quenchly-menubar --language ja\nX-Delay=5\n[Other]\nHidden=false\n";
    writeOwn(edited);
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_EQ(item()->status(), Status::requiresApproval);
    item()->requestApproval();
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_EQ(testing::contentOf(entry), edited);
}

TEST_F(AutostartTest, AHeaderInACommentOrAValueIsNoGroup)
{
    const std::string edited =
        "# [Desktop Entry] of mine\n  [Desktop Entry]\t\nComment=[Desktop Entry]\nExec=true\n[Other]\nX=[Desktop "
        "Entry]\n";
    writeOwn(edited);
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_EQ(testing::contentOf(entry),
              "# [Desktop Entry] of mine\n  [Desktop Entry]\t\nHidden=true\nComment=[Desktop "
              "Entry]\nExec=true\n[Other]\nX=[Desktop Entry]\n");
    EXPECT_EQ(item()->status(), Status::requiresApproval);
    item()->requestApproval();
    EXPECT_EQ(testing::contentOf(entry), edited);
}

TEST_F(AutostartTest, OurOwnEntryThatTheDesktopSwitchedOffIsRemovedWithoutATrace)
{
    ASSERT_EQ(item()->registerItem(), "");
    writeOwn(testing::contentOf(entry) + "X-GNOME-Autostart-enabled=false\n");
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(AutostartTest, AnEntryWhoseProgramIsGoneIsNotFoundAndIsWrittenAnew)
{
    ASSERT_EQ(itemFor(executable("old/quenchly-menubar"))->registerItem(), "");
    fs::remove_all(scratch / "old");
    EXPECT_EQ(item()->status(), Status::notFound);
    EXPECT_EQ(item()->registerItem(), "");
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_NE(testing::contentOf(entry).find("TryExec=" + program.string() + "\n"), std::string::npos);
}

TEST_F(AutostartTest, AnEntryWhoseProgramIsGoneIsRemoved)
{
    ASSERT_EQ(itemFor(scratch / "gone")->registerItem(), "");
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(AutostartTest, AnEntryForAllUsersCounts)
{
    writeSystems("[Desktop Entry]\nExec=true\n");
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(AutostartTest, TheOwnEntryOverridesTheOneForAllUsers)
{
    writeSystems("[Desktop Entry]\nExec=true\n");
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_EQ(item()->status(), Status::requiresApproval);
    item()->requestApproval();
    EXPECT_EQ(item()->status(), Status::enabled);
    EXPECT_EQ(testing::contentOf(systemEntry), "[Desktop Entry]\nExec=true\n");
}

TEST_F(AutostartTest, AnEntryForAllUsersThatTheAdministratorSwitchedOffRequiresApproval)
{
    writeSystems("[Desktop Entry]\nExec=true\nHidden=true\n");
    EXPECT_EQ(item()->status(), Status::requiresApproval);
    item()->requestApproval();
    EXPECT_EQ(item()->status(), Status::enabled);
}

TEST_F(AutostartTest, RemovingWhatIsNotThereSucceeds)
{
    EXPECT_EQ(item()->unregisterItem(), "");
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(AutostartTest, AFolderThatCannotBeMadeIsReported)
{
    scratch.write("own/autostart", "a file where the folder should be");
    EXPECT_NE(item()->registerItem(), "");
    EXPECT_EQ(item()->status(), Status::notRegistered);
}

}  // namespace
}  // namespace quenchly
