#include "pages/marks/RingMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace quillbrook {
namespace {

using testing::ElementsAre;

Path pathOf(const Mark& mark)
{
    return std::get<Path>(mark.shape);
}

void expectNear(Point actual, Point expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

RingChart ringOf(const std::vector<double>& amounts)
{
    RingChart chart{.innerRatio = 0.5, .angularInset = 0};
    for (const double amount : amounts) {
        chart.sectors.push_back(
            {.amount = amount, .tint = {SystemColor::blue}, .datum = {"sector", "value"}});
    }
    return chart;
}

TEST(Ring, GoesClockwiseFromTheTop)
{
    // Middle (100, 50), radii 50 and 25. The quarter's arc has its controls 0.5523 of the radius
    // away.
    const std::vector<Mark> marks = ringMarks(ringOf({25, 75}), {200, 100});
    ASSERT_EQ(marks.size(), 2U);
    const Path path = pathOf(marks[0]);
    ASSERT_EQ(path.size(), 4U);
    const double reach = 4.0 / 3 * (std::sqrt(2) - 1);
    expectNear(path[0].to, {100, 0});
    expectNear(path[1].control1, {100 + 50 * reach, 0});
    expectNear(path[1].control2, {150, 50 - 50 * reach});
    expectNear(path[1].to, {150, 50});
    expectNear(path[2].to, {125, 50});
    expectNear(path[3].control1, {125, 50 - 25 * reach});
    expectNear(path[3].control2, {100 + 25 * reach, 25});
    expectNear(path[3].to, {100, 25});
    EXPECT_EQ(pathOf(marks[1]).size(), 8U); // three quarters, outside and inside
    EXPECT_THAT(marks[0].fills, ElementsAre(Tint{SystemColor::blue}));
    EXPECT_EQ(marks[0].role, MarkRole::mark);
    EXPECT_EQ(marks[0].name, "sector");
    EXPECT_EQ(marks[0].value, "value");
}

TEST(Ring, LeavesAnEvenGapBetweenSectors)
{
    RingChart chart = ringOf({1, 1});
    chart.angularInset = 6;
    const Path path = pathOf(ringMarks(chart, {100, 100})[0]);
    // The right half: its sides stand 3 to the right of the middle, outside and inside.
    expectNear(path[0].to, {53, 50 - std::sqrt(50 * 50 - 9)});
    expectNear(path[2].to, {53, 50 + std::sqrt(50 * 50 - 9)});
    expectNear(path[3].to, {53, 50 + std::sqrt(25 * 25 - 9)});
    expectNear(path[5].to, {53, 50 - std::sqrt(25 * 25 - 9)});
}

TEST(Ring, OfOneSectorIsWhole)
{
    RingChart chart = ringOf({0, 7});
    chart.angularInset = 6;
    const std::vector<Mark> marks = ringMarks(chart, {100, 100});
    EXPECT_EQ(pathOf(marks[0]).size(), 1U); // no size, and listed all the same
    const Path path = pathOf(marks[1]);
    ASSERT_EQ(path.size(), 10U); // two circles of four arcs
    expectNear(path[0].to, {50, 0});
    expectNear(path[4].to, {50, 0});
    EXPECT_EQ(path[5].kind, PathStep::Kind::move);
    expectNear(path[5].to, {50, 25});
    expectNear(path[6].to, {25, 50}); // the inner one runs back
    const Rect place = bounds(marks[1].shape);
    expectNear({place.x, place.y}, {0, 0});
    expectNear({place.width, place.height}, {100, 100});
}

TEST(Ring, KeepsThinSectorsApartAndInPlace)
{
    RingChart chart = ringOf({1, 5000});
    chart.angularInset = 4;
    const Path path = pathOf(ringMarks(chart, {100, 100})[0]);
    const double width = 50 * 2 * std::numbers::pi / 5001;
    EXPECT_NEAR(path[1].to.x - path[0].to.x, width / 2, 1e-6);
}

TEST(Ring, EndsASectorWhereItsSidesMeet)
{
    RingChart chart = ringOf({1, 11});
    chart.angularInset = 20; // 30 degrees: the sides meet 10 / sin 15° = 38.6 from the middle
    const Path path = pathOf(ringMarks(chart, {100, 100})[0]);
    ASSERT_EQ(path.size(), 3U);
    const double side = std::min(10.0, 50 * std::numbers::pi / 6 / 4);
    const double meeting = side / std::sin(std::numbers::pi / 12);
    expectNear(path[2].to,
        {50 + meeting * std::sin(std::numbers::pi / 12),
            50 - meeting * std::cos(std::numbers::pi / 12)});
}

TEST(Ring, DrawsATextInTheMiddleOfItsSector)
{
    RingChart chart = ringOf({1, 1});
    chart.sectors[0].text = "50%";
    const std::vector<Mark> marks = ringMarks(chart, {100, 100});
    ASSERT_EQ(marks.size(), 3U);
    EXPECT_EQ(marks[1].role, MarkRole::text);
    EXPECT_EQ(marks[1].name, "50%");
    EXPECT_TRUE(marks[1].texts[0].isOnColor);
    const Rect place = bounds(marks[1].shape);
    expectNear(center(place), {87.5, 50});
    EXPECT_EQ(place.width, 25);
}

TEST(Ring, StandsEveryNumber)
{
    constexpr double kHuge = std::numeric_limits<double>::max();
    const std::vector<Mark> marks = ringMarks(ringOf({kHuge, kHuge, std::nan(""), -1}), {100, 100});
    expectNear(pathOf(marks[0])[2].to, {50, 100}); // a half each
    EXPECT_EQ(pathOf(marks[2]).size(), 1U);
    EXPECT_EQ(pathOf(marks[3]).size(), 1U);
    EXPECT_EQ(ringMarks(ringOf({0, 0}), {100, 100}).size(), 2U);
    EXPECT_EQ(ringMarks(ringOf({1, 2}), {0, 0}).size(), 2U);
    EXPECT_TRUE(ringMarks({}, {100, 100}).empty());
}

} // namespace
} // namespace quillbrook
