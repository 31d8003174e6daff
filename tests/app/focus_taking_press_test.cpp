#include "focus_taking_press.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

using namespace std::chrono_literals;

constexpr QPoint item(1200, 14);
constexpr QPoint elsewhere(400, 300);
constexpr std::chrono::milliseconds lossTime = 60'000ms;
constexpr std::chrono::milliseconds gaps[] = {20ms, 60ms, 120ms, 240ms, 260ms, 500ms};

TEST(FocusTakingPress, APressWithoutALossOfTheFocusIsAnother)
{
    EXPECT_FALSE(FocusTakingPress().isHeardAt({.pointer = item, .time = lossTime}));
}

TEST(FocusTakingPress, ThePressThatTookTheFocusIsKnownHoweverLateItIsHeard)
{
    for (const auto gap : gaps) {
        FocusTakingPress press;
        press.panelLostFocus({.pointer = item, .time = lossTime});
        EXPECT_TRUE(press.isHeardAt({.pointer = item, .time = lossTime + gap})) << gap.count();
    }
}

TEST(FocusTakingPress, TheNextOneIsAnotherHoweverSoonItComes)
{
    for (const auto gap : gaps) {
        FocusTakingPress press;
        press.panelLostFocus({.pointer = item, .time = lossTime});
        EXPECT_TRUE(press.isHeardAt({.pointer = item, .time = lossTime + 1ms}));
        EXPECT_FALSE(press.isHeardAt({.pointer = item, .time = lossTime + gap})) << gap.count();
    }
}

TEST(FocusTakingPress, AfterAPressElsewhereTheOneOnTheItemIsAnother)
{
    for (const auto gap : gaps) {
        FocusTakingPress press;
        press.panelLostFocus({.pointer = elsewhere, .time = lossTime});
        EXPECT_FALSE(press.isHeardAt({.pointer = item, .time = lossTime + gap})) << gap.count();
    }
}

TEST(FocusTakingPress, AHandThatTremblesStillPressesOnce)
{
    FocusTakingPress press;
    press.panelLostFocus({.pointer = item, .time = lossTime});
    EXPECT_TRUE(press.isHeardAt({.pointer = item + QPoint(3, -2), .time = lossTime + 90ms}));
}

TEST(FocusTakingPress, ALossLongAgoWasNoPressOnTheItem)
{
    FocusTakingPress press;
    press.panelLostFocus({.pointer = item, .time = lossTime});
    EXPECT_FALSE(press.isHeardAt({.pointer = item, .time = lossTime + 5s}));
}

TEST(FocusTakingPress, APressThatHasBeenHeardOfIsForgotten)
{
    FocusTakingPress press;
    press.panelLostFocus({.pointer = item, .time = lossTime});
    press.forget();
    EXPECT_FALSE(press.isHeardAt({.pointer = item, .time = lossTime + 20ms}));
}

}  // namespace
}  // namespace quenchly
