#include "login_at_launch.h"

#include <gtest/gtest.h>

#include "scripted_system.h"

namespace quenchly {
namespace {

using Status = LoginItem::Status;

class LoginAtLaunchTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    System system = world.system();
};

TEST_F(LoginAtLaunchTest, TheFirstLaunchRegistersTheItem)
{
    LoginAtLaunch::applyDefaultIfNeeded(system);
    EXPECT_EQ(world.loginItem->registrations, 1);
    EXPECT_TRUE(world.defaults->contains("quenchly.openAtLogin.didApplyDefault"));
}

TEST_F(LoginAtLaunchTest, ALaterLaunchDoesNotTurnItBackOn)
{
    LoginAtLaunch::applyDefaultIfNeeded(system);
    LoginAtLaunch::setEnabled(system, false);
    LoginAtLaunch::applyDefaultIfNeeded(system);
    EXPECT_EQ(world.loginItem->now, Status::notRegistered);
}

TEST_F(LoginAtLaunchTest, TheMerePresenceOfTheKeyCounts)
{
    world.defaults->values["quenchly.openAtLogin.didApplyDefault"] = false;
    LoginAtLaunch::applyDefaultIfNeeded(system);
    EXPECT_EQ(world.loginItem->registrations, 0);
}

TEST_F(LoginAtLaunchTest, AFailedFirstAttemptIsNotRepeated)
{
    world.loginItem->refusal = "not today";
    LoginAtLaunch::applyDefaultIfNeeded(system);
    world.loginItem->refusal.clear();
    LoginAtLaunch::applyDefaultIfNeeded(system);
    EXPECT_EQ(world.loginItem->registrations, 1);
    EXPECT_EQ(world.log, std::vector<std::string>{"Quenchly Open at Login failed: not today"});
}

TEST_F(LoginAtLaunchTest, AnItemThatIsAlreadyAsAskedIsLeftAlone)
{
    world.loginItem->now = Status::enabled;
    EXPECT_TRUE(LoginAtLaunch::setEnabled(system, true));
    world.loginItem->now = Status::notRegistered;
    EXPECT_TRUE(LoginAtLaunch::setEnabled(system, false));
    EXPECT_EQ(world.loginItem->registrations + world.loginItem->removals, 0);
}

TEST_F(LoginAtLaunchTest, TurningOffAlsoRemovesAnItemThatWaitsForApprovalOrIsNotFound)
{
    for (const Status status : {Status::requiresApproval, Status::notFound}) {
        world.loginItem->now = status;
        world.loginItem->removals = 0;
        EXPECT_TRUE(LoginAtLaunch::setEnabled(system, false));
        EXPECT_EQ(world.loginItem->removals, 1);
    }
}

TEST_F(LoginAtLaunchTest, AFailureIsLoggedAndReported)
{
    world.loginItem->refusal = "100% refused";
    EXPECT_FALSE(LoginAtLaunch::setEnabled(system, true));
    EXPECT_EQ(world.log, std::vector<std::string>{"Quenchly Open at Login failed: 100% refused"});
}

}  // namespace
}  // namespace quenchly
