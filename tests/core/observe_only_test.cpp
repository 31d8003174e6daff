#include "observe_only.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <future>
#include <optional>
#include <string>

#include "file_reading.h"
#include "test_files.h"
#include "user_home.h"

namespace quenchly {
namespace {

using testing::OrdinaryUser;
using testing::ScratchFolder;

namespace fs = std::filesystem;

constexpr const char* switchedOff = R"({"disabledAt":"2026-03-01T12:00:00Z"})";
constexpr const char* dryAgent = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>Label</key><string>com.brindlemoor.quenchly</string>
<key>ProgramArguments</key><array><string>quenchly</string><string>check</string><string>--dry-run</string></array>
</dict></plist>
)";

class Installation : public ::testing::Test {
protected:
    fs::path managedFile() const { return "home/state/managed.json"; }
    fs::path agentFile() const { return fs::path("agents") / ObserveOnly::agentPlistName; }
    fs::path dataHome() const { return scratch / "home"; }
    std::optional<fs::path> agents() const { return scratch / "agents"; }
    bool disabled() const { return ObserveOnly::isManagementDisabled(dataHome()); }
    bool installed() const { return ObserveOnly::isAgentInstalled(agents()); }
    bool dry() const { return ObserveOnly::runsDry(agents()); }
    bool active() const { return ObserveOnly::isActive({.dataHome = dataHome(), .launchAgentsDir = agents()}); }

    ScratchFolder scratch;
};

TEST_F(Installation, NothingOnDiskIsAnsweredWithNo)
{
    EXPECT_FALSE(disabled());
    EXPECT_FALSE(installed());
    EXPECT_FALSE(dry());
    EXPECT_FALSE(active());
}

TEST_F(Installation, ProtectionIsOffOnlyWithANonEmptyTextUnderDisabledAt)
{
    const struct {
        const char* content;
        bool isOff;
    } rows[] = {
        {.content = switchedOff, .isOff = true},
        {.content = R"({"disabledAt":"yes"})", .isOff = true},
        {.content = R"({"disabledAt":" "})", .isOff = true},
        {.content = R"({"disabledAt":"2026-03-01T12:00:00Z","by":{"user":[1,2]}})", .isOff = true},
        {.content = R"({"disabledAt":""})", .isOff = false},
        {.content = R"({"disabledAt":12})", .isOff = false},
        {.content = R"({"disabledAt":true})", .isOff = false},
        {.content = R"({"disabledAt":null})", .isOff = false},
        {.content = R"({"disabledAt":["2026-03-01T12:00:00Z"]})", .isOff = false},
        {.content = R"({"disabledAt":{"at":"2026-03-01T12:00:00Z"}})", .isOff = false},
        {.content = R"({"DisabledAt":"2026-03-01T12:00:00Z"})", .isOff = false},
        {.content = R"({"state":{"disabledAt":"2026-03-01T12:00:00Z"}})", .isOff = false},
        {.content = R"([{"disabledAt":"2026-03-01T12:00:00Z"}])", .isOff = false},
        {.content = R"("disabledAt")", .isOff = false},
        {.content = "{}", .isOff = false},
        {.content = "null", .isOff = false},
        {.content = "", .isOff = false},
        {.content = "disabledAt", .isOff = false},
        {.content = "{\"disabledAt\":\"\xFF\"}", .isOff = false},
    };
    for (const auto& [content, isOff] : rows) {
        scratch.write(managedFile(), content);
        EXPECT_EQ(disabled(), isOff) << content;
        EXPECT_EQ(active(), isOff) << content;
    }
}

TEST_F(Installation, AManagedFileCutOffAnywhereCountsAsOn)
{
    const std::string whole = switchedOff;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        scratch.write(managedFile(), whole.substr(0, length));
        EXPECT_FALSE(disabled()) << length;
    }
    scratch.write(managedFile(), whole);
    EXPECT_TRUE(disabled());
}

TEST_F(Installation, TheAgentIsInstalledWhenItsFileExistsWhateverItHolds)
{
    for (const char* content : {"", "garbage \xFF", dryAgent}) {
        scratch.write(agentFile(), content);
        EXPECT_TRUE(installed());
    }
}

TEST_F(Installation, AnotherAgentsFileDoesNotCount)
{
    scratch.write("agents/com.brindlemoor.quenchly.plist.bak", dryAgent);
    scratch.write("agents/com.brindlemoor.other.plist", dryAgent);
    EXPECT_FALSE(installed());
    EXPECT_FALSE(dry());
}

TEST_F(Installation, DryRunAnywhereInTheAgentsFileMeansObservingOnly)
{
    const struct {
        std::string content;
        bool isDry;
    } rows[] = {
        {.content = dryAgent, .isDry = true},
        {.content = "--dry-run", .isDry = true},
        {.content = "<!-- without --dry-run -->", .isDry = true},
        {.content = "--dry-running", .isDry = true},
        {.content = "x--dry-run", .isDry = true},
        {.content = "caf\u00E9 --dry-run", .isDry = true},
        {.content = "", .isDry = false},
        {.content = "-dry-run", .isDry = false},
        {.content = "--dry run", .isDry = false},
        {.content = "--DRY-RUN", .isDry = false},
        {.content = "--dry-\nrun", .isDry = false},
        {.content = "--dry-run \xFF", .isDry = false},  // not UTF-8, so it cannot be read as text
    };
    for (const auto& [content, isDry] : rows) {
        scratch.write(agentFile(), content);
        EXPECT_EQ(dry(), isDry) << content;
        EXPECT_EQ(active(), isDry) << content;
        EXPECT_FALSE(disabled()) << content;
    }
}

TEST_F(Installation, AnAgentsFileCutOffWithinTheOptionDoesNotCount)
{
    const std::string whole = "<string>--dry-run";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        scratch.write(agentFile(), whole.substr(0, length));
        EXPECT_FALSE(dry()) << length;
    }
    scratch.write(agentFile(), whole);
    EXPECT_TRUE(dry());
}

TEST_F(Installation, ProtectionOffIsObservingOnlyEvenWithoutAnAgent)
{
    scratch.write(managedFile(), switchedOff);
    EXPECT_TRUE(active());
    EXPECT_FALSE(installed());
    EXPECT_FALSE(dry());
}

TEST_F(Installation, AFileThatCannotBeReadIsAnsweredWithNo)
{
    struct Fault {
        const char* name;
        std::function<void(const fs::path&, const char* content)> make;
        bool exists;
    };
    const Fault faults[] = {
        {"a folder", [&](const fs::path& at, const char*) { scratch.makeFolder(at); }, true},
        {"a FIFO", [&](const fs::path& at, const char*) { scratch.makeFifo(at); }, true},
        {"a dangling link", [&](const fs::path& at, const char*) { scratch.makeLink(at, scratch / "nowhere"); }, false},
        {"a circle of links", [&](const fs::path& at, const char*) { scratch.makeLink(at, scratch / at); }, false},
        {"a file of 100 MB",
         [&](const fs::path& at, const char* content) { scratch.writeSparse(at, content, 100'000'000); }, true},
        {"a file followed by zeros",
         [&](const fs::path& at, const char* content) { scratch.writeSparse(at, content, maxFileBytes + 1); }, true},
    };
    for (const Fault& fault : faults) {
        fs::remove_all(scratch / "home");
        fs::remove_all(scratch / "agents");
        fault.make(managedFile(), switchedOff);
        fault.make(agentFile(), dryAgent);
        EXPECT_FALSE(disabled()) << fault.name;
        EXPECT_FALSE(dry()) << fault.name;
        EXPECT_FALSE(active()) << fault.name;
        EXPECT_EQ(installed(), fault.exists) << fault.name;
    }
}

TEST_F(Installation, AFileWithoutPermissionIsAnsweredWithNoAndStillCountsAsInstalled)
{
    fs::permissions(scratch.write(managedFile(), switchedOff), fs::perms::none);
    fs::permissions(scratch.write(agentFile(), dryAgent), fs::perms::none);
    const OrdinaryUser user;
    if (!user.inForce())
        GTEST_SKIP() << "started by root, and root cannot become an ordinary user here";
    EXPECT_FALSE(disabled());
    EXPECT_FALSE(dry());
    EXPECT_TRUE(installed());
}

TEST_F(Installation, LinkedFilesAreFollowed)
{
    scratch.makeLink(managedFile(), scratch.write("elsewhere/managed", switchedOff));
    scratch.makeLink(agentFile(), scratch.write("elsewhere/agent", dryAgent));
    EXPECT_TRUE(disabled());
    EXPECT_TRUE(installed());
    EXPECT_TRUE(dry());
}

TEST_F(Installation, DeepNestingBesideTheKeyDoesNoHarm)
{
    constexpr int depth = 100'000;
    std::string objects;
    for (int i = 0; i < depth; ++i)
        objects += "{\"a\":";
    objects += "1" + std::string(depth, '}');
    const std::string arrays = std::string(depth, '[') + std::string(depth, ']');
    for (const std::string& nested : {arrays, objects}) {
        scratch.write(managedFile(), "{\"disabledAt\":\"now\",\"x\":" + nested + "}");
        EXPECT_TRUE(disabled());
        scratch.write(managedFile(), "{\"disabledAt\":" + nested + "}");
        EXPECT_FALSE(disabled());
    }
    scratch.write(managedFile(), std::string(depth, '['));
    EXPECT_FALSE(disabled());
}

TEST_F(Installation, AVeryLongTextUnderDisabledAtCounts)
{
    scratch.write(managedFile(), "{\"disabledAt\":\"" + std::string(1 << 20, 'x') + "\"}");
    EXPECT_TRUE(disabled());
}

TEST_F(Installation, AManagedFileReplacedWhileItIsReadNeverAppearsSwitchedBackOn)
{
    const std::string longer = "{\"disabledAt\":\"now\",\"why\":\"" + std::string(200'000, 'x') + "\"}";
    scratch.replace(managedFile(), longer);
    std::atomic<bool> finished = false;
    auto writer = std::async(std::launch::async, [&] {
        for (int i = 0; i < 200; ++i)
            scratch.replace(managedFile(), i % 2 == 0 ? switchedOff : longer);
        finished = true;
    });
    do {
        ASSERT_TRUE(disabled());
    } while (!finished);
    writer.get();
}

TEST(ObserveOnly, TheAgentsFolderIsTheUsersOwnUnlessOneIsGiven)
{
    EXPECT_EQ(ObserveOnly::agentPlistName, "com.brindlemoor.quenchly.plist");
    EXPECT_EQ(ObserveOnly::defaultLaunchAgentsDir(), userHomeFolder() / "Library/LaunchAgents");
    EXPECT_TRUE(userHomeFolder().is_absolute());
}

}  // namespace
}  // namespace quenchly
