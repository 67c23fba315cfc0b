#include "pages/figures/Motion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace quillbrook {
namespace {

TEST(EaseInOut, IsSlowAtBothEnds)
{
    EXPECT_EQ(easeInOut(0), 0);
    EXPECT_EQ(easeInOut(0.25), 0.125);
    EXPECT_EQ(easeInOut(0.5), 0.5);
    EXPECT_EQ(easeInOut(0.75), 0.875);
    EXPECT_EQ(easeInOut(1), 1);
    EXPECT_EQ(easeInOut(-3), 0);
    EXPECT_EQ(easeInOut(3), 1);
}

TEST(Spring, SwingsOverAndComesToRest)
{
    constexpr Spring spring{.responseSec = 0.3, .damping = 0.5};
    EXPECT_EQ(springPosition(spring, 0), 0);
    EXPECT_EQ(springPosition(spring, -1), 0);
    // Half a swing after it was let go it is farthest beyond: by e^(-pi * d / sqrt(1 - d^2)).
    const double halfSwing = 0.15 / std::sqrt(0.75);
    EXPECT_NEAR(springPosition(spring, halfSwing),
        1 + std::exp(-std::numbers::pi * 0.5 / std::sqrt(0.75)), 1e-12);
    EXPECT_NEAR(springPosition(spring, springRest(spring)), 1, 0.0012);
    EXPECT_NEAR(springRest(spring), 0.66, 0.005);
}

TEST(Swing, GoesToAndFroForEver)
{
    constexpr Swing swing{.from = 0, .to = 1, .startedAt = 100, .legSec = 0.8};
    EXPECT_EQ(swing.at(99), 0);
    EXPECT_EQ(swing.at(100), 0);
    EXPECT_NEAR(swing.at(100.4), 0.5, 1e-9);
    EXPECT_NEAR(swing.at(100.8), 1, 1e-9);
    EXPECT_NEAR(swing.at(101.2), 0.5, 1e-9);
    EXPECT_NEAR(swing.at(101.4), 0.125, 1e-9);
    EXPECT_NEAR(swing.at(101.6), 0, 1e-9);
    EXPECT_NEAR(swing.at(100 + 1.6 * 1000 + 0.8), 1, 1e-6);
    EXPECT_FALSE(swing.isStill());
}

TEST(Swing, IsStillBetweenEqualEnds)
{
    constexpr Swing swing{.from = 0.25, .to = 0.25, .startedAt = 100, .legSec = 0.8};
    EXPECT_TRUE(swing.isStill());
    EXPECT_EQ(swing.at(100.3), 0.25);
}

} // namespace
} // namespace quillbrook
