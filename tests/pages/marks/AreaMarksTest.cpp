#include "pages/marks/AreaMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace quillbrook {
namespace {

using testing::ElementsAre;

Path pathOf(const Mark& mark)
{
    return std::get<Path>(mark.shape);
}

/// The legend takes 12.5 and 8 above it: a plot of 100 by 100.
constexpr Size kSize{100, 120.5};

AreaChart chartOf(const std::vector<std::vector<AreaPoint>>& series, double lastDay)
{
    AreaChart chart{.axes = {.x = {.from = 0, .to = lastDay}, .y = {.from = 0, .to = 1}}};
    for (const auto& points : series) {
        chart.series.push_back({"s", {SystemColor::blue}, points});
    }
    return chart;
}

std::vector<Mark> areasOf(const std::vector<Mark>& marks, std::size_t count)
{
    return {marks.begin(), marks.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(Areas, ArePaintedOpaqueFromTheHighestDown)
{
    AreaChart chart = chartOf({{{0, 0.25}, {1, 0.25}}, {{0, 0.75}, {1, 0.75}}}, 1);
    chart.series[1].tint = {SystemColor::red};
    const std::vector<Mark> marks = areaMarks(chart, kSize, plainWidths());
    EXPECT_EQ(marks[0],
        (Mark{.shape = Path{moveTo({0, 100}), lineTo({0, 0}),
                  cubicTo({100.0 / 3, 0}, {100 - 100.0 / 3, 0}, {100, 0}), lineTo({100, 100})},
            .fills = {{SystemColor::red, 0.75}},
            .ground = InterfaceColor::controlBackground}));
    EXPECT_EQ(marks[1].fills, (std::vector<Tint>{{SystemColor::blue, 0.75}}));
    EXPECT_EQ(pathOf(marks[1])[1], lineTo({0, 75}));
    EXPECT_THAT(namesOf(marks, MarkRole::text), ElementsAre("s", "s"));
}

TEST(Areas, HaveAMarkForEachPoint)
{
    const AreaChart chart = chartOf({{{0, 0.5, {"a 01-01", "0.5", "help"}}, {2, 1, {"a 01-03"}}},
                                        {{0, 0.5, {"b 01-01"}}, {1, 0, {"b 01-02"}}}},
        2);
    const std::vector<Mark> marks = areaMarks(chart, kSize, plainWidths());
    EXPECT_THAT(
        namesOf(marks, MarkRole::mark), ElementsAre("a 01-01", "a 01-03", "b 01-01", "b 01-02"));
    const std::vector<Mark> slices = marksOf(marks, MarkRole::mark);
    EXPECT_EQ(slices[0].value, "0.5");
    EXPECT_EQ(slices[0].help, "help");
    EXPECT_TRUE(slices[0].fills.empty());
    EXPECT_EQ(bounds(slices[0].shape).x, 0);
    EXPECT_EQ(bounds(slices[0].shape).width, 25);
    EXPECT_EQ(bounds(slices[3].shape).x, 25);
    EXPECT_EQ(bounds(slices[3].shape).width, 50);
}

TEST(Areas, ShareOneCurveWithTheirNeighbour)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> share(0.05, 0.3);
    std::vector<std::vector<AreaPoint>> series(3);
    for (double day = 0; day < 15; ++day) {
        for (auto& points : series) {
            points.push_back({day, share(random)});
        }
    }
    const std::vector<Mark> slices
        = marksOf(areaMarks(chartOf(series, 14), kSize, plainWidths()), MarkRole::mark);
    ASSERT_EQ(slices.size(), 45U);
    for (std::size_t day = 1; day < 14; ++day) {
        const Path below = pathOf(slices[day]);
        const Path above = pathOf(slices[15 + day]);
        // move, line, two curves to the right, line, two curves back
        ASSERT_EQ(below.size(), 7U);
        EXPECT_EQ(below[1].to, above[0].to);
        EXPECT_EQ(below[3].to, above[4].to);
        EXPECT_EQ(below[3].control2, above[5].control1);
        EXPECT_EQ(below[3].control1, above[5].control2);
        EXPECT_EQ(below[2].to, above[5].to);
        EXPECT_EQ(below[2].control2, above[6].control1);
        EXPECT_EQ(below[2].control1, above[6].control2);
    }
}

TEST(Areas, AreNotPaintedWhereASeriesHasNoPoint)
{
    // The upper series is there on the days 0, 1 and 5 alone: painted from 0 to 2 and from 4 to 5.
    std::vector<AreaPoint> lower;
    for (double day = 0; day <= 5; ++day) {
        lower.push_back({day, 0.5});
    }
    const AreaChart chart = chartOf({lower, {{0, 0.2}, {1, 0.2}, {5, 0.2}}}, 5);
    const std::vector<Mark> marks = areaMarks(chart, kSize, plainWidths());
    const Path upper = pathOf(marks[0]);
    std::vector<double> x;
    for (const PathStep& step : upper) {
        x.push_back(step.to.x);
    }
    EXPECT_THAT(x, ElementsAre(0, 0, 20, 40, 40, 80, 80, 100, 100));
    EXPECT_EQ(upper[5].kind, PathStep::Kind::move);
    EXPECT_EQ(upper[3].to, (Point{40, 50})); // down to the lower series
    EXPECT_EQ(upper[4].to, (Point{40, 100}));
}

TEST(Areas, JoinDaysThatNoSeriesHas)
{
    const AreaChart chart = chartOf({{{0, 1}, {3, 1}}}, 3);
    const std::vector<Mark> marks = areaMarks(chart, kSize, plainWidths());
    EXPECT_EQ(bounds(marks[0].shape), (Rect{0, 0, 100, 100}));
    EXPECT_EQ(bounds(marks[1].shape), (Rect{0, 0, 50, 100}));
}

TEST(Areas, OfOneDayAreABand)
{
    AreaChart chart = chartOf({{{7, 0.25, {"a"}}}, {{7, 0.75, {"b"}}}}, 1);
    chart.axes.x = {.from = 6.5, .to = 7.5};
    const std::vector<Mark> marks = areaMarks(chart, kSize, plainWidths());
    const std::vector<Mark> slices = marksOf(marks, MarkRole::mark);
    EXPECT_EQ(bounds(slices[0].shape), (Rect{0, 75, 100, 25}));
    EXPECT_EQ(bounds(slices[1].shape), (Rect{0, 0, 100, 75}));
    EXPECT_EQ(bounds(marks[1].shape), (Rect{0, 75, 100, 25}));
}

TEST(Areas, StayInThePlotWhateverTheyAreGiven)
{
    const AreaChart chart
        = chartOf({{{0, 0.9}, {1, std::nan("")}, {2, HUGE_VAL}}, {{0, 0.9}, {1, -3}, {2, 1}}}, 2);
    for (const Mark& area : areasOf(areaMarks(chart, kSize, plainWidths()), 2)) {
        const Rect place = bounds(area.shape);
        EXPECT_GE(place.y, 0);
        EXPECT_LE(bottom(place), 100);
        EXPECT_GE(place.x, 0);
        EXPECT_LE(right(place), 100);
    }
}

TEST(Areas, StandAnySize)
{
    const AreaChart chart = chartOf({{{0, 0.5}, {1, 0.1}, {2, 0.7}}}, 2);
    for (const Size size : {Size{0, 0}, Size{0, 100}, Size{100, 0}, Size{-1, -1}}) {
        for (const Mark& mark : areaMarks(chart, size, plainWidths())) {
            const Rect place = bounds(mark.shape);
            EXPECT_TRUE(std::isfinite(place.x + place.y + place.width + place.height));
        }
    }
    EXPECT_TRUE(areaMarks({}, kSize, plainWidths()).empty());
}

} // namespace
} // namespace quillbrook
