#include "pages/marks/LineMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;

LineChart twoLines()
{
    return {.axes = {.x = {.from = 0, .to = 2}, .y = {.from = 0, .to = 10}},
        .series = {{.label = "one",
                       .tint = {SystemColor::blue},
                       .points = {{0, 5, {"one 01-01", "5"}}, {1, 12, {"one 01-02", "12"}},
                           {2, 0, {"one 01-03", "0"}}}},
            {.label = "two",
                .tint = {SystemColor::green},
                .points = {{1, 2.5, {"two 01-02", "2.5", "help"}}}}}};
}

TEST(Lines, JoinTheirPoints)
{
    // The legend takes 12.5 and 8 above it: the plot is 100 high.
    const std::vector<Mark> marks = lineMarks(twoLines(), {200, 120.5}, plainWidths());
    EXPECT_EQ(marks[0],
        (Mark{.shape = Path{moveTo({0, 50}), lineTo({100, 0}), lineTo({200, 100})},
            .stroke = Stroke{{SystemColor::blue}, 2}}));
    EXPECT_EQ(marks[1].shape, Shape(Circle{{0, 50}, 2.5}));
    EXPECT_THAT(marks[1].fills, ElementsAre(Tint{SystemColor::blue}));
    EXPECT_EQ(marks[4].shape, Shape(Circle{{100, 75}, 2.5})); // one point has no line
}

TEST(Lines, HaveAMarkForEachPointOfEachSeries)
{
    const std::vector<Mark> marks = lineMarks(twoLines(), {200, 120.5}, plainWidths());
    EXPECT_THAT(namesOf(marks, MarkRole::mark),
        ElementsAre("one 01-01", "one 01-02", "one 01-03", "two 01-02"));
    const Mark last = marksOf(marks, MarkRole::mark).back();
    EXPECT_EQ(last,
        (Mark{.shape = Circle{{100, 75}, 6},
            .role = MarkRole::mark,
            .name = "two 01-02",
            .value = "2.5",
            .help = "help"}));
    EXPECT_THAT(namesOf(marks, MarkRole::text), ElementsAre("one", "two"));
}

TEST(Lines, WithoutPointsAreALegendAlone)
{
    LineChart chart = twoLines();
    chart.series[0].points.clear();
    chart.series.pop_back();
    EXPECT_EQ(lineMarks(chart, {200, 120.5}, plainWidths()).size(), 2U);
}

} // namespace
} // namespace quillbrook
