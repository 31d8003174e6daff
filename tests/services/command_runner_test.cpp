#include "command_runner.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <thread>

#include "descriptor.h"
#include "file_reading.h"
#include "recorded_tool.h"
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

TEST_F(LocateTest, AWorkingCopyThatOthersMayChangeIsPassedOver)
{
    const fs::path outer = makeTool("work/dist/quenchly.mjs");
    const fs::path inner = makeTool("work/copy/dist/quenchly.mjs");
    system.currentDirectory = world.scratch.makeFolder("work/copy/below");
    EXPECT_EQ(CLIRunner::locate(system), inner);
    for (const fs::path& part : {inner, inner.parent_path(), world.scratch / "work/copy"}) {
        fs::permissions(part, fs::perms::others_write, fs::perm_options::add);
        EXPECT_EQ(CLIRunner::locate(system), outer) << part;
        fs::permissions(part, fs::perms::others_write, fs::perm_options::remove);
    }
    EXPECT_EQ(CLIRunner::locate(system), inner);
}

TEST_F(LocateTest, AStrangersScriptInASharedFolderIsPassedOver)
{
    const auto stranger = testing::anotherUser();
    if (!stranger)
        GTEST_SKIP() << "only root can act as another user";
    const fs::path ours = makeTool("bin/quenchly");
    system.environment["PATH"] = world.scratch / "bin";
    const fs::path shared = world.scratch.makeFolder("shared");
    fs::permissions(shared, fs::perms::all | fs::perms::sticky_bit);
    system.currentDirectory = world.scratch.makeFolder("shared/ours");
    ASSERT_TRUE(testing::runAsAnotherUser(*stranger, [&] { return !makeTool("shared/dist/quenchly.mjs").empty(); }));
    ASSERT_TRUE(fs::exists(shared / "dist/quenchly.mjs"));
    fs::permissions(shared / "dist/quenchly.mjs", fs::perms(0755));
    fs::permissions(shared / "dist", fs::perms(0755));
    EXPECT_EQ(CLIRunner::locate(system), ours);
    ASSERT_TRUE(testing::runAsAnotherUser(*stranger, [&] {
        fs::remove(shared / "dist/quenchly.mjs");
        fs::create_symlink(ours, shared / "dist/quenchly.mjs");
        return true;
    }));
    EXPECT_EQ(CLIRunner::locate(system), ours) << "not by way of a link that a stranger can turn";
    EXPECT_NE(CLIRunner::locate(system), shared / "dist/quenchly.mjs");
}

TEST_F(LocateTest, AFolderOfTheSearchPathNearTheCurrentDirectoryMustBeSafeToo)
{
    const fs::path tool = makeTool("work/near/quenchly");
    system.environment["PATH"] = "near";
    EXPECT_EQ(CLIRunner::locate(system), tool);
    fs::permissions(tool.parent_path(), fs::perms::group_write, fs::perm_options::add);
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
    system.environment["PATH"] = tool.parent_path();
    EXPECT_EQ(CLIRunner::locate(system), tool) << "whoever names a folder in full means it";
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

TEST_F(LocateTest, AnEmptyEntryOfTheSearchPathIsTheCurrentDirectory)
{
    const fs::path tool = makeTool("work/quenchly");
    for (const char* path : {"", ":/missing", "/missing:", "/missing::/missing"}) {
        system.environment["PATH"] = path;
        EXPECT_EQ(CLIRunner::locate(system), tool) << path;
    }
    system.environment["PATH"] = "/missing";
    EXPECT_EQ(CLIRunner::locate(system), std::nullopt);
}

TEST_F(LocateTest, TheSearchEndsAtTheRoot)
{
    for (const char* directory : {"/", "/missing", ""}) {
        system.currentDirectory = directory;
        EXPECT_EQ(CLIRunner::locate(system), std::nullopt) << directory;
    }
}

TEST_F(LocateTest, TheRunnerOfAFoundToolCarriesWhatItNeeds)
{
    EXPECT_FALSE(CLIRunner::find(world.dataHome(), system));
    const fs::path shipped = makeTool("program/quenchly");
    system.environment["NAME"] = "value";
    system.nodeRuntimes = {"/usr/bin/node"};
    const auto runner = CLIRunner::find(world.dataHome(), system);
    ASSERT_TRUE(runner);
    EXPECT_EQ(runner->cli, shipped);
    EXPECT_EQ(runner->dataHome, world.dataHome());
    EXPECT_EQ(runner->homeFolder, world.home());
    EXPECT_EQ(runner->inheritedEnvironment, system.environment);
    EXPECT_EQ(runner->systemNodes, system.nodeRuntimes);
    EXPECT_EQ(runner->dashboardPort, 8280);
}

TEST_F(LocateTest, AScriptIsToldByItsFirstTwoBytes)
{
    EXPECT_TRUE(CLIRunner::isScriptCLI(world.scratch.write("a", "#!/usr/bin/env node\n")));
    EXPECT_TRUE(CLIRunner::isScriptCLI(world.scratch.write("b", "#!")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch.write("c", "#")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch.write("d", "")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch.write("e", " #!")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch.write("tool.mjs", "console.log(1)")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch / "missing"));
    EXPECT_FALSE(CLIRunner::isScriptCLI(world.scratch.makeFolder("folder")));
    EXPECT_FALSE(CLIRunner::isScriptCLI(testing::RecordedTool::program()));
}

TEST_F(LocateTest, AScriptThatCannotBeReadIsNone)
{
    const fs::path script = world.scratch.write("secret", "#!/bin/sh\n");
    fs::permissions(script, fs::perms::owner_exec);
    const testing::OrdinaryUser user;
    if (!user.inForce())
        GTEST_SKIP() << "this user may read everything";
    EXPECT_FALSE(CLIRunner::isScriptCLI(script));
}

TEST_F(LocateTest, ANodeRuntimeIsLookedForInThisOrder)
{
    for (const char* version : {"v20.11.1", "v9.11.2", "v18.20.0"})
        world.scratch.makeFolder(fs::path(".nvm/versions/node") / version);
    const fs::path nvm = world.home() / ".nvm/versions/node";
    const std::vector<fs::path> expected{"/tools/node",
                                         "/tools/qn-node",
                                         "/opt/homebrew/bin/node",
                                         "/usr/local/bin/node",
                                         nvm / "v9.11.2/bin/node",
                                         nvm / "v20.11.1/bin/node",
                                         nvm / "v18.20.0/bin/node",
                                         world.home() / "local/node24/bin/node",
                                         "/usr/bin/node",
                                         "/opt/node/bin/node"};
    EXPECT_EQ(nodeCandidates({.nearCLI = "/tools/quenchly",
                              .homeFolder = world.home(),
                              .systemNodes = {"/usr/bin/node", "/opt/node/bin/node"}}),
              expected);
}

class NodeTest : public LocateTest {
protected:
    void SetUp() override
    {
        for (const char* installed : {"/opt/homebrew/bin/node", "/usr/local/bin/node"})
            if (access(installed, X_OK) == 0)
                GTEST_SKIP() << installed << " comes before the runtimes in the home folder";
    }

    std::optional<fs::path> node() const
    {
        return CLIRunner::locateNode({.nearCLI = world.scratch / "tool/quenchly", .homeFolder = world.home()});
    }
};

TEST_F(NodeTest, TheFirstRuntimeThatIsThereIsTaken)
{
    EXPECT_EQ(node(), std::nullopt);
    const char* const fromLastToFirst[] = {"local/node24/bin/node",
                                           ".nvm/versions/node/v18.20.0/bin/node",
                                           ".nvm/versions/node/v20.11.1/bin/node",
                                           ".nvm/versions/node/v9.11.2/bin/node",
                                           "tool/qn-node",
                                           "tool/node"};
    for (const char* place : fromLastToFirst) {
        const fs::path runtime = makeTool(place);
        EXPECT_EQ(node(), runtime);
    }
}

TEST_F(NodeTest, AnUnusableRuntimeIsPassedOver)
{
    const fs::path older = makeTool(".nvm/versions/node/v18.20.0/bin/node");
    world.scratch.write(".nvm/versions/node/v20.11.1/bin/node", "not executable");
    world.scratch.makeFolder(".nvm/versions/node/v9.11.2/bin/node");
    world.scratch.write(".nvm/versions/node/zzz", "not a folder");
    EXPECT_EQ(node(), older);
}

TEST_F(NodeTest, TheSystemsOwnRuntimesComeLast)
{
    const fs::path ofSystem = makeTool("bin/node");
    const std::vector<fs::path> systemNodes{world.scratch / "missing/node", ofSystem};
    const auto found = [&] {
        return CLIRunner::locateNode(
            {.nearCLI = world.scratch / "tool/quenchly", .homeFolder = world.home(), .systemNodes = systemNodes});
    };
    EXPECT_EQ(found(), ofSystem);
    const fs::path given = makeTool("local/node24/bin/node");
    EXPECT_EQ(found(), given);
}

class RunnerTest : public LocateTest {
protected:
    testing::RecordedTool tool{world.scratch};
    CLIRunner runner{.cli = testing::RecordedTool::program(),
                     .dataHome = world.dataHome(),
                     .homeFolder = world.home(),
                     .inheritedEnvironment = tool.environment()};

    void behave(const std::string& behaviour) { runner.inheritedEnvironment = tool.environment(behaviour); }
};

TEST_F(RunnerTest, TheEnvironmentNamesTheDataFolderAndPlacesToFindNode)
{
    for (const char* version : {"v20.11.1", "v9.11.2", "v18.20.0"})
        world.scratch.makeFolder(fs::path(".nvm/versions/node") / version);
    runner.cli = "/tools/quenchly";
    runner.inheritedEnvironment = {{"PATH", "/inherited"}, {"QUENCHLY_HOME", "/inherited"}, {"NAME", "kept"}};
    const std::string nvm = world.home().string() + "/.nvm/versions/node/";
    const std::map<std::string, std::string> expected{
        {"NAME", "kept"},
        {"QUENCHLY_HOME", world.dataHome()},
        {"PATH", "/tools:" + nvm + "v18.20.0/bin:" + nvm + "v20.11.1/bin:" + nvm +
                     "v9.11.2/bin:/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin"}};
    EXPECT_EQ(runner.environment(), expected);
}

TEST_F(RunnerTest, WithoutNvmThePathHasNoGap)
{
    runner.cli = "/tools/quenchly";
    EXPECT_EQ(runner.environment()["PATH"], "/tools:/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin");
}

TEST_F(RunnerTest, ANativeToolIsRunAsItIs)
{
    const CLIRunner::Invocation expected{.executable = runner.cli, .arguments = {"enable"}};
    EXPECT_EQ(runner.processInvocation(ToolCommand::enable), expected);
}

TEST_F(RunnerTest, AScriptIsRunThroughNodeWhateverItsName)
{
    const fs::path node = makeTool("tool/node");
    for (const char* line : {"#!/usr/bin/env node\n", "#!/usr/bin/node\r\n", "#! /opt/bin/nodejs --flag\n", "#!",
                             "#!\n", "#!/usr/bin/env -S node --flag", "#!/usr/bin/env -i NAME=value\tnode"}) {
        runner.cli = world.scratch.write("tool/quenchly", line);
        const CLIRunner::Invocation expected{.executable = node, .arguments = {runner.cli, "quarantine", "ack", "id"}};
        EXPECT_EQ(runner.processInvocation({ToolCommand::acknowledge, "id"}), expected) << line;
    }
}

TEST_F(RunnerTest, AScriptWithAnotherInterpreterIsRunByItsOwnLine)
{
    makeTool("tool/node");
    for (const char* line :
         {"#!/bin/sh\n", "#! /bin/sh -e", "#!/usr/bin/env python3\n", "#!/usr/bin/env -S node.sh\n"}) {
        runner.cli = makeTool("tool/quenchly");
        world.scratch.write("tool/quenchly", line);
        EXPECT_EQ(runner.processInvocation(ToolCommand::enable),
                  (CLIRunner::Invocation{.executable = runner.cli, .arguments = {"enable"}}))
            << line;
        EXPECT_EQ(runner.availability(), ToolAvailability::available) << line;
    }
    world.scratch.write("tool/quenchly", "#!/bin/sh\necho \"$1\" > \"$QUENCHLY_HOME/ran\"\n");
    runner.dataHome = world.scratch.makeFolder("data");
    EXPECT_TRUE(runner.runWaiting(ToolCommand::enable));
    EXPECT_EQ(readFile(world.scratch / "data/ran").bytes, "enable\n");
}

TEST_F(RunnerTest, AScriptThatItsOwnLineCannotRunIsNoTool)
{
    makeTool("tool/node");
    runner.cli = makeTool("tool/quenchly");
    fs::permissions(runner.cli, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(runner.processInvocation(ToolCommand::enable), std::nullopt) << "not executable";
    EXPECT_EQ(runner.availability(), ToolAvailability::toolNotFound);
    fs::permissions(runner.cli, fs::perms::owner_all);
    for (const char* line : {"#!/nonexistent/shell\n", "#!bin/sh\n"}) {
        world.scratch.write("tool/quenchly", line);
        EXPECT_EQ(runner.processInvocation(ToolCommand::enable), std::nullopt) << line;
        EXPECT_EQ(runner.availability(), ToolAvailability::toolNotFound) << line;
    }
}

class ScriptWithoutNodeTest : public NodeTest {};

TEST_F(ScriptWithoutNodeTest, CannotBeRun)
{
    const CLIRunner runner{.cli = world.scratch.write("tool/quenchly", "#!/usr/bin/env node\n"),
                           .homeFolder = world.home()};
    EXPECT_EQ(runner.processInvocation(ToolCommand::enable), std::nullopt);
    EXPECT_EQ(runner.availability(), ToolAvailability::interpreterNotFound);
    EXPECT_FALSE(runner.run(ToolCommand::enable));
    EXPECT_FALSE(runner.runWaiting(ToolCommand::enable));
}

TEST_F(RunnerTest, ARealNodeRunsTheScript)
{
    const auto installed = testing::onSearchPath("node");
    if (!installed)
        GTEST_SKIP() << "there is no node on this machine's search path";
    world.scratch.makeLink("tool/node", *installed);
    runner.cli = world.scratch.write("tool/quenchly",
                                     "#!/usr/bin/env node\n"
                                     "require('fs').writeFileSync(process.env.QUENCHLY_HOME + '/arguments', "
                                     "JSON.stringify(process.argv.slice(2)));\n"
                                     "process.exit(process.argv[2] === 'quarantine' ? 0 : 1);\n");
    runner.dataHome = world.scratch.makeFolder("data");
    EXPECT_TRUE(runner.runWaiting({ToolCommand::acknowledge, "a b"}));
    EXPECT_EQ(readFile(world.scratch / "data/arguments").bytes, R"(["quarantine","ack","a b"])");
    EXPECT_FALSE(runner.runWaiting(ToolCommand::disable));
}

TEST_F(RunnerTest, AnIdArrivesAsItIsInOneArgument)
{
    std::vector<CLIRunner::Arguments> expected;
    for (const char* id : {"", "-x", "a b", "ID", "\"$(exit)'", "line\nbreak", "日本"}) {
        EXPECT_TRUE(runner.runWaiting({ToolCommand::acknowledge, id}));
        expected.push_back({"quarantine", "ack", id});
    }
    EXPECT_EQ(tool.runs(), expected);
}

TEST_F(RunnerTest, AnArgumentWithANulIsRefused)
{
    EXPECT_FALSE(runner.runWaiting({ToolCommand::acknowledge, std::string("a\0b", 3)}));
    EXPECT_FALSE(runner.run({ToolCommand::acknowledge, std::string("a\0b", 3)}));
    EXPECT_FALSE(tool.hasStarted());
}

TEST_F(RunnerTest, OnlyExitStatusZeroIsSuccess)
{
    EXPECT_TRUE(runner.runWaiting(ToolCommand::enable));
    for (const char* behaviour : {"fail", "killed"}) {
        behave(behaviour);
        EXPECT_FALSE(runner.runWaiting(ToolCommand::enable)) << behaviour;
    }
    EXPECT_EQ(tool.runs().size(), 3u);
    EXPECT_TRUE(testing::hasNoChild());
}

TEST_F(RunnerTest, TheExitStatusCountsEvenWhenOurStarterIgnoredItsChildren)
{
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_TRUE(runner.runWaiting(ToolCommand::enable));
    std::signal(SIGCHLD, handler);
}

TEST_F(RunnerTest, WhatCannotBeStartedFails)
{
    const fs::path noProgram = world.scratch.write("text", "neither a script nor a program");
    fs::permissions(noProgram, fs::perms::owner_all);
    for (const fs::path& file : {world.scratch / "missing", world.scratch.makeFolder("folder"),
                                 world.scratch.write("plain", "not executable"), noProgram}) {
        runner.cli = file;
        EXPECT_FALSE(runner.run(ToolCommand::serve)) << file;
        EXPECT_FALSE(runner.runWaiting(ToolCommand::enable)) << file;
    }
    EXPECT_TRUE(testing::hasNoChild());
}

TEST_F(RunnerTest, AGigabyteThatNobodyReadsBlocksNoOne)
{
    behave("flood");
    EXPECT_TRUE(runner.runWaiting(ToolCommand::enable));
    EXPECT_TRUE(tool.hasEnded());
}

TEST_F(RunnerTest, TheChildInheritsTheEnvironmentAndNothingElse)
{
    const Descriptor leaky(open("/dev/zero", O_RDONLY));
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_TRUE(runner.runWaiting(ToolCommand::enable));
    std::signal(SIGPIPE, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    const nlohmann::json start = tool.events().at(0);
    EXPECT_EQ(start["environment"], nlohmann::json(runner.environment()));
    EXPECT_TRUE(start["streamsAreNull"]);
    EXPECT_TRUE(start["leadsSession"]);
    EXPECT_EQ(start["descriptors"], nlohmann::json::array());
    EXPECT_EQ(start["blockedSignals"], nlohmann::json::array());
    EXPECT_EQ(start["ignoredSignals"], nlohmann::json::array());
}

TEST_F(RunnerTest, ADetachedRunIsNotWaitedForAndLeavesNoZombie)
{
    behave("hang");
    EXPECT_TRUE(runner.run(ToolCommand::serve));
    ASSERT_TRUE(testing::eventually([&] { return tool.hasStarted(); }));
    EXPECT_FALSE(testing::hasNoChild()) << "it still runs";
    tool.release();
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
    EXPECT_TRUE(tool.hasEnded());
    EXPECT_EQ(tool.runs(), std::vector<CLIRunner::Arguments>{{"serve"}});
}

TEST_F(RunnerTest, ADetachedRunHasTheSameSurroundings)
{
    EXPECT_TRUE(runner.run(ToolCommand::serve));
    ASSERT_TRUE(testing::eventually([&] { return tool.hasEnded() && testing::hasNoChild(); }));
    const nlohmann::json start = tool.events().at(0);
    EXPECT_TRUE(start["streamsAreNull"]);
    EXPECT_TRUE(start["leadsSession"]);
    EXPECT_EQ(start["descriptors"], nlohmann::json::array());
}

TEST_F(RunnerTest, ADetachedRunOutlivesTheProgramThatStartedIt)
{
    behave("hang");
    const pid_t program = fork();
    if (program == 0)
        _exit(runner.run(ToolCommand::serve) ? 0 : 1);
    int status = -1;
    ASSERT_EQ(waitpid(program, &status, 0), program);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(testing::eventually([&] { return tool.hasStarted(); }));
    const pid_t child = tool.events().at(0)["process"];
    EXPECT_EQ(kill(child, 0), 0);
    EXPECT_EQ(getsid(child), child);
    tool.release();
    EXPECT_TRUE(testing::eventually([&] { return tool.hasEnded(); }));
}

TEST_F(RunnerTest, TwoHundredDetachedRunsLeakNoDescriptor)
{
    const int before = testing::openDescriptors();
    for (int i = 0; i < 200; ++i)
        ASSERT_TRUE(runner.run(ToolCommand::serve));
    ASSERT_TRUE(testing::eventually(testing::hasNoChild));
    EXPECT_EQ(tool.runs().size(), 200u);
    EXPECT_EQ(testing::openDescriptors(), before);
}

TEST_F(RunnerTest, AWaitingRunBlocksItsOwnThreadAlone)
{
    behave("hang");
    bool succeeded = false;
    std::thread waiting([&] { succeeded = runner.runWaiting(ToolCommand::enable); });
    EXPECT_TRUE(testing::eventually([&] { return tool.hasStarted(); }));
    tool.release();
    waiting.join();
    EXPECT_TRUE(succeeded);
}

}  // namespace
}  // namespace quenchly
