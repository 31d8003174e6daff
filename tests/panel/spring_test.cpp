#include "spring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace quenchly {
namespace {

constexpr Spring growing{.from = 20, .to = 80};
constexpr Spring moving{.from = 50, .to = 10, .initialVelocity = 300};

TEST(SpringTest, ItStartsWhereAndAsFastAsItWasLetGo)
{
    EXPECT_DOUBLE_EQ(moving.position(0), 50);
    EXPECT_NEAR(moving.velocity(0), 300, 1e-9);
    EXPECT_NEAR(growing.velocity(0), 0, 1e-9);
}

TEST(SpringTest, TheVelocityIsTheSlopeOfThePosition)
{
    constexpr double step = 1e-6;
    for (double time = 0.01; time < 1; time += 0.07) {
        const double slope = (moving.position(time + step) - moving.position(time - step)) / (2 * step);
        EXPECT_NEAR(moving.velocity(time), slope, 1e-3) << time;
    }
}

TEST(SpringTest, ItMovesAsADampedSpringOfItsResponseAndDamping)
{
    constexpr double step = 1e-6;
    const double frequency = 2 * std::numbers::pi / 0.55;
    for (double time = 0.01; time < 1; time += 0.07) {
        const double acceleration = (moving.velocity(time + step) - moving.velocity(time - step)) / (2 * step);
        const double force =
            -frequency * frequency * (moving.position(time) - moving.to) - 2 * 0.84 * frequency * moving.velocity(time);
        EXPECT_NEAR(acceleration, force, 0.05) << time;
    }
}

TEST(SpringTest, ItOvershootsALittleOnce)
{
    double furthest = 0;
    for (double time = 0; time < 2; time += 0.001)
        furthest = std::max(furthest, growing.position(time));
    const double overshoot = std::exp(-0.84 * std::numbers::pi / std::sqrt(1 - 0.84 * 0.84));
    EXPECT_NEAR(furthest, 80 + 60 * overshoot, 0.01);
}

TEST(SpringTest, OnceSettledItStaysWithinTheDistance)
{
    for (const Spring& spring : {growing, moving}) {
        const double settled = spring.settledAfter(0.1);
        EXPECT_GT(settled, 0.1);
        EXPECT_LT(settled, 2);
        for (double time = settled; time < settled + 3; time += 0.003)
            EXPECT_LE(std::abs(spring.position(time) - spring.to), 0.1) << time;
    }
}

TEST(SpringTest, ASpringAtItsEndIsSettled)
{
    EXPECT_EQ((Spring{.from = 5, .to = 5}).settledAfter(0.1), 0);
}

}  // namespace
}  // namespace quenchly
