#include "file_reading.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <future>
#include <string>

#include "heat_state.h"
#include "own_process.h"
#include "test_files.h"

namespace quenchly {
namespace {

using Outcome = FileReading::Outcome;
using testing::OrdinaryUser;
using testing::ScratchFolder;

namespace fs = std::filesystem;

void expectNothingRead(const fs::path& path, Outcome outcome)
{
    const FileReading reading = readFile(path);
    EXPECT_EQ(reading.outcome, outcome);
    EXPECT_EQ(reading.bytes, "");
}

TEST(FileReading, AFileIsReadWithEveryByteThatItHolds)
{
    const ScratchFolder scratch;
    std::string everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte += static_cast<char>(i);
    for (const std::string& bytes :
         {std::string("x"), everyByte, std::string(4096, 'p'), std::string(1'000'003, 'q')}) {
        const FileReading reading = readFile(scratch.write("file", bytes));
        EXPECT_EQ(reading.outcome, Outcome::read);
        EXPECT_TRUE(reading.bytes == bytes) << bytes.size() << " bytes";
    }
}

TEST(FileReading, AnEmptyFileIsReadAsNothing)
{
    const ScratchFolder scratch;
    expectNothingRead(scratch.write("empty", ""), Outcome::read);
}

TEST(FileReading, NothingAtThePathIsMissing)
{
    const ScratchFolder scratch;
    scratch.write("file", "x");
    scratch.makeLink("dangling", scratch / "nowhere");
    scratch.makeLink("circle", scratch / "circle");
    for (const char* name : {"absent", "absent/below", "file/below", "dangling", "circle"}) {
        SCOPED_TRACE(name);
        expectNothingRead(scratch / name, Outcome::missing);
        EXPECT_FALSE(fileExists(scratch / name));
    }
}

TEST(FileReading, ALinkIsFollowedToItsFile)
{
    const ScratchFolder scratch;
    scratch.write("file", "content");
    const FileReading reading = readFile(scratch.makeLink("link", scratch / "file"));
    EXPECT_EQ(reading.outcome, Outcome::read);
    EXPECT_EQ(reading.bytes, "content");
}

TEST(FileReading, WhatIsNoRegularFileIsUnreadableAndNeverBlocks)
{
    const ScratchFolder scratch;
    for (const fs::path& path : {scratch.makeFolder("folder"), scratch.makeFifo("fifo"),
                                 scratch.makeLink("link-to-fifo", scratch / "fifo"), fs::path("/dev/zero")}) {
        SCOPED_TRACE(path);
        expectNothingRead(path, Outcome::unreadable);
        EXPECT_TRUE(fileExists(path));
    }
}

TEST(FileReading, AFileWithoutPermissionIsUnreadableAndStillExists)
{
    const ScratchFolder scratch;
    const fs::path path = scratch.write("secret", "content");
    fs::permissions(path, fs::perms::none);
    const OrdinaryUser user;
    if (!user.inForce())
        GTEST_SKIP() << "started by root, and root cannot become an ordinary user here";
    expectNothingRead(path, Outcome::unreadable);
    EXPECT_TRUE(fileExists(path));
}

TEST(FileReading, AFileInAFolderThatMayNotBeEnteredCountsAsMissing)
{
    const ScratchFolder scratch;
    const fs::path path = scratch.write("closed/file", "content");
    fs::permissions(path.parent_path(), fs::perms::none);
    {
        const OrdinaryUser user;
        if (user.inForce()) {
            expectNothingRead(path, Outcome::missing);
            EXPECT_FALSE(fileExists(path));
        }
    }
    fs::permissions(path.parent_path(), fs::perms::owner_all);
}

TEST(FileReading, AFileAtTheLimitIsReadAndOneByteMoreIsTooLarge)
{
    const ScratchFolder scratch;
    const FileReading atLimit = readFile(scratch.writeSparse("limit", "start", maxFileBytes));
    EXPECT_EQ(atLimit.outcome, Outcome::read);
    EXPECT_EQ(atLimit.bytes.size(), maxFileBytes);
    EXPECT_TRUE(atLimit.bytes.starts_with("start"));
    expectNothingRead(scratch.writeSparse("beyond", "start", maxFileBytes + 1), Outcome::tooLarge);
    expectNothingRead(scratch.writeSparse("huge", "{}", 100'000'000), Outcome::tooLarge);
}

#ifdef __linux__
TEST(FileReading, AFileThatReportsNoSizeIsReadToItsEnd)
{
    const FileReading reading = readFile("/proc/self/status");
    EXPECT_EQ(reading.outcome, Outcome::read);
    EXPECT_TRUE(reading.bytes.starts_with("Name:"));
    EXPECT_TRUE(reading.bytes.ends_with('\n'));
}
#endif

TEST(FileReading, NoDescriptorStaysOpenWhateverTheOutcome)
{
    const ScratchFolder scratch;
    const fs::path paths[] = {scratch.write("file", "x"), scratch / "absent", scratch.makeFolder("folder"),
                              scratch.makeFifo("fifo"), scratch.writeSparse("huge", "", maxFileBytes + 1)};
    const int before = testing::openDescriptors();
    for (const fs::path& path : paths)
        readFile(path);
    EXPECT_EQ(testing::openDescriptors(), before);
}

TEST(FileReading, AFileReplacedWhileItIsReadIsWhollyTheOldOrWhollyTheNewOne)
{
    const ScratchFolder scratch;
    const auto stateNamed = [](char letter, std::size_t length) {
        return "{\"thermalTruth\":\"" + std::string(length, letter) +
               "\",\"hot\":" + (letter == 'o' ? "true}" : "false}");
    };
    const std::string oldState = stateNamed('o', 300'000);
    const std::string newState = stateNamed('n', 1'000);
    const fs::path path = scratch.replace("heat-state.json", oldState);

    std::atomic<bool> finished = false;
    auto writer = std::async(std::launch::async, [&] {
        for (int i = 0; i < 300; ++i)
            scratch.replace("heat-state.json", i % 2 == 0 ? newState : oldState);
        finished = true;
    });
    bool last = false;
    while (!last) {
        last = finished;
        const FileReading reading = readFile(path);
        ASSERT_EQ(reading.outcome, Outcome::read);
        ASSERT_TRUE(reading.bytes == oldState || reading.bytes == newState) << reading.bytes.size() << " bytes";
        const auto state = HeatState::parse(reading.bytes);
        ASSERT_TRUE(state);
        ASSERT_EQ(state->hot, state->thermalTruth.utf8().front() == 'o');
    }
    writer.get();
    EXPECT_EQ(readFile(path).bytes, oldState);
}

}  // namespace
}  // namespace quenchly
