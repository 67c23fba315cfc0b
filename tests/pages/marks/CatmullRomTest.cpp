#include "pages/marks/CatmullRom.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(CatmullRomSlopes, FollowTheRootsOfTheDistances)
{
    // Distances 4 and 1, intervals 2 and 1. The middle velocity is
    // x: 4/2 - 4.6/3 + 0.6/1 = 1.0666.., y: 0/2 - 0.8/3 + 0.8/1 = 0.5333..
    const std::vector<Point> points{{0, 0}, {4, 0}, {4.6, 0.8}};
    EXPECT_THAT(catmullRomSlopes(points),
        ElementsAre(0, DoubleNear(0.5, 1e-12), DoubleNear(0.8 / 0.6, 1e-12)));
}

TEST(CatmullRomSlopes, OfALineAreItsOwn)
{
    const std::vector<Point> points{{0, 3}, {1, 5}, {4, 11}};
    for (const double slope : catmullRomSlopes(points)) {
        EXPECT_NEAR(slope, 2, 1e-12);
    }
}

TEST(CatmullRomSlopes, AreNoneOfNoneAndLevelOfOne)
{
    EXPECT_THAT(catmullRomSlopes({}), IsEmpty());
    EXPECT_THAT(catmullRomSlopes(std::vector<Point>{{7, 9}}), ElementsAre(0));
}

TEST(CurveBetween, HasItsControlPointsAtThirds)
{
    EXPECT_EQ(curveBetween({0, 0}, 1, {3, 6}, 2), cubicTo({1, 1}, {2, 4}, {3, 6}));
}

TEST(HalvesOf, MeetHalfwayInX)
{
    const auto [first, second] = halvesOf({{0, 0}, cubicTo({2, 2}, {4, 8}, {6, 12})});
    // Middles (1,1) (3,5) (5,10), of these (2,3) (4,7.5), of these (3,5.25).
    EXPECT_EQ(first, (Curve{{0, 0}, cubicTo({1, 1}, {2, 3}, {3, 5.25})}));
    EXPECT_EQ(second, (Curve{{3, 5.25}, cubicTo({4, 7.5}, {5, 10}, {6, 12})}));
}

TEST(Reversed, RunsTheOtherWay)
{
    const Curve curve{{0, 0}, cubicTo({1, 1}, {2, 4}, {3, 6})};
    EXPECT_EQ(reversed(curve), (Curve{{3, 6}, cubicTo({2, 4}, {1, 1}, {0, 0})}));
    EXPECT_EQ(reversed(reversed(curve)), curve);
}

} // namespace
} // namespace quillbrook
