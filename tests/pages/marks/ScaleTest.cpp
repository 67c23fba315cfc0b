#include "pages/marks/Scale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Scale, GoesBothWays)
{
    const Scale upwards{.from = 0, .to = 256, .start = 138, .end = 10};
    EXPECT_EQ(pointOf(upwards, 0), 138);
    EXPECT_EQ(pointOf(upwards, 64), 106);
    EXPECT_EQ(pointOf(upwards, 256), 10);
    EXPECT_EQ(pointOf(upwards, 272), 2);
    EXPECT_EQ(valueAt(upwards, 106), 64);
    EXPECT_EQ(valueAt(upwards, 148), -20);
    EXPECT_EQ(unitLength(upwards), 0.5);
}

TEST(Scale, WithoutLengthHasOnePlace)
{
    EXPECT_EQ(pointOf({.from = 3, .to = 3, .start = 20, .end = 80}, 7), 20);
    EXPECT_EQ(unitLength({.from = 3, .to = 3, .start = 20, .end = 80}), 0);
    EXPECT_EQ(valueAt({.from = 3, .to = 5, .start = 20, .end = 20}, 99), 3);
}

TEST(Scale, TakesWhatLiesBeyondForItsEnds)
{
    const Scale scale{.from = 0, .to = 100};
    EXPECT_EQ(clampedTo(scale, 100.5), 100);
    EXPECT_EQ(clampedTo(scale, -1), 0);
    EXPECT_EQ(clampedTo(scale, kInfinity), 100);
    EXPECT_EQ(clampedTo(scale, std::nan("")), 0);
    EXPECT_EQ(clampedTo({.from = 9.5, .to = -0.5}, 12), 9.5);
}

TEST(AutomaticMarks, AreAsManyAsMayBe)
{
    EXPECT_THAT(automaticMarks(5), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(automaticMarks(3), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(automaticMarks(4), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(automaticMarks(6), ElementsAre(0, 2, 4, 6));
    EXPECT_THAT(automaticMarks(11.5), ElementsAre(0, 2, 4, 6, 8, 10));
    EXPECT_THAT(automaticMarks(13), ElementsAre(0, 5, 10));
    EXPECT_THAT(automaticMarks(24), ElementsAre(0, 5, 10, 15, 20));
    EXPECT_THAT(automaticMarks(1000), ElementsAre(0, 200, 400, 600, 800, 1000));
}

TEST(AutomaticMarks, AreTheNearestNumbersToTenths)
{
    EXPECT_THAT(automaticMarks(1), ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1));
    EXPECT_THAT(automaticMarks(0.6), ElementsAre(0, 0.2, 0.4, 0.6));
    EXPECT_THAT(automaticMarks(0.35), ElementsAre(0, 0.1, 0.2, 0.3));
}

TEST(AutomaticMarks, AreOnlyZeroWithoutADomain)
{
    EXPECT_THAT(automaticMarks(0), ElementsAre(0));
    EXPECT_THAT(automaticMarks(-4), ElementsAre(0));
    EXPECT_THAT(automaticMarks(std::nan("")), ElementsAre(0));
    EXPECT_EQ(automaticMarks(kInfinity).size(), 6U);
}

TEST(AutomaticMarks, AreThreeToSixWithinEveryDomain)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> exponent(-12, 15);
    for (int i = 0; i < 20000; ++i) {
        const double most = std::pow(10.0, exponent(random));
        const std::vector<double> marks = automaticMarks(most);
        ASSERT_GE(marks.size(), 3U) << most;
        ASSERT_LE(marks.size(), 6U) << most;
        ASSERT_LE(marks.back(), most);
        ASSERT_GT(marks.back() + marks[1], most);
        const double leading = marks[1] / std::pow(10.0, std::floor(std::log10(marks[1] * 1.001)));
        ASSERT_TRUE(std::abs(leading - 1) < 1e-9 || std::abs(leading - 2) < 1e-9
            || std::abs(leading - 5) < 1e-9)
            << most;
    }
}

} // namespace
} // namespace quillbrook
