#include "watched_file.h"

#include <gtest/gtest.h>

#include <chrono>

#include "test_files.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;

class WatchedFileTest : public ::testing::Test {
protected:
    testing::ScratchFolder folder;
    Instant now;
    WatchedFile file{folder / "state.json", [this] { return now; }};

    /// Writes the file; the clock then shows the time of that and `later`.
    void write(const char* text, std::chrono::microseconds later)
    {
        folder.write("state.json", text);
        const std::chrono::nanoseconds stamp(fileStamp(file.path())->changedAt);
        now = Instant(std::chrono::ceil<std::chrono::microseconds>(stamp)) + later;
    }

    std::string bytes()
    {
        const auto reading = file.readIfChanged();
        return reading ? reading->bytes : "unchanged";
    }

    void expectTold(FileReading::Outcome outcome)
    {
        const auto reading = file.readIfChanged();
        ASSERT_TRUE(reading.has_value());
        EXPECT_EQ(reading->outcome, outcome);
    }
};

TEST_F(WatchedFileTest, AFileAtRestIsNotReadAgainUntilItChanges)
{
    write("one", 2s + 1us);
    EXPECT_EQ(bytes(), "one");
    EXPECT_EQ(bytes(), "unchanged");
    now += 24h;
    EXPECT_EQ(bytes(), "unchanged");
    write("other", 2s + 1us);
    EXPECT_EQ(bytes(), "other");
    EXPECT_EQ(bytes(), "unchanged");
}

TEST_F(WatchedFileTest, AFileThatMayHaveChangedWithinAClockTickIsReadAgain)
{
    for (const auto later : {-1h, 0h}) {
        write("one", later);
        EXPECT_EQ(bytes(), "one");
        EXPECT_EQ(bytes(), "one");
    }
    write("one", 2s - 1us);
    EXPECT_EQ(bytes(), "one");
    now += 2us;
    EXPECT_EQ(bytes(), "one");
    EXPECT_EQ(bytes(), "unchanged");
}

TEST_F(WatchedFileTest, WhatIsNotThereOrNoFileIsToldEachTime)
{
    for (int i = 0; i < 2; ++i)
        expectTold(FileReading::Outcome::missing);
    folder.makeFolder("state.json");
    for (int i = 0; i < 2; ++i)
        expectTold(FileReading::Outcome::unreadable);
}

TEST_F(WatchedFileTest, AFileAtRestThatIsDeletedIsMissing)
{
    write("one", 3s);
    EXPECT_EQ(bytes(), "one");
    ASSERT_EQ(bytes(), "unchanged");
    std::filesystem::remove(file.path());
    expectTold(FileReading::Outcome::missing);
}

}  // namespace
}  // namespace quenchly
