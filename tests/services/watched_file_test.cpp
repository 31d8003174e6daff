#include "watched_file.h"

#include <gtest/gtest.h>

#include <QTest>

#include "patience.h"
#include "test_files.h"

namespace quenchly {
namespace {

class WatchedFileTest : public ::testing::Test {
protected:
    testing::ScratchFolder folder;
    WatchedFile file{folder / "state.json"};

    /// Reads the file until its stamp is old enough to be trusted.
    bool comesToRest()
    {
        return QTest::qWaitFor([this] { return !file.readIfChanged(); }, testing::patience);
    }

    std::string bytes()
    {
        const auto reading = file.readIfChanged();
        return reading ? reading->bytes : "unchanged";
    }
};

TEST_F(WatchedFileTest, AFileAtRestIsNotReadAgainUntilItChanges)
{
    folder.write("state.json", "one");
    EXPECT_EQ(bytes(), "one");
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(bytes(), "unchanged");
    folder.write("state.json", "two");
    EXPECT_EQ(bytes(), "two");
}

TEST_F(WatchedFileTest, AFileThatMayHaveChangedWithinAClockTickIsReadAgain)
{
    bool isReadAgain = false;
    // A machine can be too busy to look twice before the file counts as being at rest.
    for (int attempt = 0; attempt < 10 && !isReadAgain; ++attempt) {
        folder.write("state.json", "one");
        EXPECT_EQ(bytes(), "one");
        isReadAgain = bytes() == "one";
    }
    EXPECT_TRUE(isReadAgain);
}

TEST_F(WatchedFileTest, WhatIsNotThereOrNoFileIsToldEachTime)
{
    for (int i = 0; i < 2; ++i) {
        const auto reading = file.readIfChanged();
        ASSERT_TRUE(reading.has_value());
        EXPECT_EQ(reading->outcome, FileReading::Outcome::missing);
    }
    folder.makeFolder("state.json");
    for (int i = 0; i < 2; ++i) {
        const auto reading = file.readIfChanged();
        ASSERT_TRUE(reading.has_value());
        EXPECT_EQ(reading->outcome, FileReading::Outcome::unreadable);
    }
}

TEST_F(WatchedFileTest, AFileAtRestThatIsDeletedIsMissing)
{
    folder.write("state.json", "one");
    ASSERT_TRUE(comesToRest());
    std::filesystem::remove(file.path());
    const auto reading = file.readIfChanged();
    ASSERT_TRUE(reading.has_value());
    EXPECT_EQ(reading->outcome, FileReading::Outcome::missing);
}

}  // namespace
}  // namespace quenchly
