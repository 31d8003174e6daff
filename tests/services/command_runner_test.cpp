#include "command_runner.h"

#include <gtest/gtest.h>

#include "scripted_system.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;

class LocateTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    System system = world.system();

    fs::path makeTool(const fs::path& relative) const
    {
        const fs::path tool = world.scratch.write(relative, "#!/bin/sh\n");
        fs::permissions(tool, fs::perms::owner_all);
        return tool;
    }
};

TEST_F(LocateTest, NothingIsFoundOnABareMachine)
{
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
}

TEST_F(LocateTest, TheToolBesideTheProgramComesFirst)
{
    const fs::path shipped = makeTool("program/quenchly");
    makeTool("work/dist/quenchly.mjs");
    EXPECT_EQ(CLIRunner::locate(system), shipped);
}

TEST_F(LocateTest, TheDevelopmentTreeComesBeforeTheSearchPath)
{
    const fs::path script = makeTool("work/dist/quenchly.mjs");
    makeTool("bin/quenchly");
    system.environment["PATH"] = world.scratch / "bin";
    EXPECT_EQ(CLIRunner::locate(system), script);
}

TEST_F(LocateTest, ADevelopmentTreeSixLevelsUpIsFoundAndSevenAreTooMany)
{
    const fs::path script = makeTool("tree/dist/quenchly.mjs");
    system.currentDirectory = world.scratch.makeFolder("tree/1/2/3/4/5/6");
    EXPECT_EQ(CLIRunner::locate(system), script);
    system.currentDirectory = world.scratch.makeFolder("tree/1/2/3/4/5/6/7");
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
}

TEST_F(LocateTest, AScriptWithoutExecutePermissionIsNotFound)
{
    world.scratch.write("work/dist/quenchly.mjs", "#!/usr/bin/env node\n");
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
}

TEST_F(LocateTest, AFolderOfTheToolsNameIsNotTheTool)
{
    world.scratch.makeFolder("program/quenchly");
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
}

TEST_F(LocateTest, TheFirstUsableEntryOfTheSearchPathWins)
{
    world.scratch.write("first/quenchly", "not executable");
    const fs::path second = makeTool("second/quenchly");
    makeTool("third/quenchly");
    system.environment["PATH"] = (world.scratch / "missing").string() + ":" + (world.scratch / "first").string() + ":" +
                                 (world.scratch / "second").string() + ":" + (world.scratch / "third").string();
    EXPECT_EQ(CLIRunner::locate(system), second);
}

}  // namespace
}  // namespace quenchly
