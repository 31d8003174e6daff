#include <gtest/gtest.h>

#include <QSignalSpy>

#include "scripted_system.h"
#include "state_watcher.h"

namespace quenchly {
namespace {

using Status = LoginItem::Status;

class OpenAtLoginTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    StateWatcher watcher{world.system()};
    QSignalSpy published{&watcher, &StateWatcher::published};
};

TEST_F(OpenAtLoginTest, TheSwitchChangesTheItemAndPublishesWhatTheSystemSays)
{
    EXPECT_TRUE(watcher.openAtLogin());
    for (const bool on : {false, true}) {
        watcher.setOpenAtLogin(on);
        EXPECT_EQ(watcher.openAtLogin(), on);
        EXPECT_EQ(world.loginItem->now, on ? Status::enabled : Status::notRegistered);
    }
    EXPECT_EQ(published.count(), 2);
}

TEST_F(OpenAtLoginTest, ARefusedChangeIsLoggedAndTheSwitchShowsWhereTheItemStands)
{
    world.loginItem->refusal = "100% no";
    watcher.setOpenAtLogin(false);
    EXPECT_TRUE(watcher.openAtLogin());
    EXPECT_EQ(published.count(), 1);
    EXPECT_EQ(world.log, std::vector<std::string>{"Quenchly Open at Login failed: 100% no"});
}

TEST_F(OpenAtLoginTest, AnItemThatWaitsForApprovalIsNotOn)
{
    world.loginItem->now = Status::requiresApproval;
    watcher.refreshOpenAtLogin();
    EXPECT_FALSE(watcher.openAtLogin());
    watcher.setOpenAtLogin(false);
    EXPECT_EQ(world.loginItem->now, Status::notRegistered) << "it is removed all the same";
}

TEST_F(OpenAtLoginTest, TurningOnWhatTheUserHasSwitchedOffAsksForApproval)
{
    world.loginItem->now = Status::requiresApproval;
    world.loginItem->refusal = "switched off";
    watcher.setOpenAtLogin(true);
    EXPECT_EQ(world.loginItem->approvalRequests, 1);
    EXPECT_FALSE(watcher.openAtLogin());
    EXPECT_EQ(world.log, std::vector<std::string>{"Quenchly Open at Login failed: switched off"});
    watcher.setOpenAtLogin(false);
    EXPECT_EQ(world.loginItem->approvalRequests, 1);
}

TEST_F(OpenAtLoginTest, RegisteringDoesNotReplaceTheUsersApproval)
{
    world.loginItem->needsApproval = true;
    watcher.setOpenAtLogin(false);
    watcher.setOpenAtLogin(true);
    EXPECT_EQ(world.loginItem->now, Status::requiresApproval);
    EXPECT_FALSE(watcher.openAtLogin());
    EXPECT_TRUE(world.log.empty());
}

TEST_F(OpenAtLoginTest, AChangeMadeElsewhereIsPublishedOnce)
{
    watcher.refreshOpenAtLogin();
    EXPECT_EQ(published.count(), 0);
    world.loginItem->now = Status::notRegistered;
    watcher.refreshOpenAtLogin();
    watcher.refreshOpenAtLogin();
    EXPECT_FALSE(watcher.openAtLogin());
    EXPECT_EQ(published.count(), 1);
}

}  // namespace
}  // namespace quenchly
