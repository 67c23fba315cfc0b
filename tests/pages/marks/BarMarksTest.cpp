#include "pages/marks/BarMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr ChartLook kLook{.labels = {.pixels = 8}, .titles = {.pixels = 8}};
constexpr TextFace kAnnotations{.pixels = 8}; // 4 a letter, 10 a line

VerticalBarChart threeBars()
{
    return {.axes = {.x = {.from = -0.5, .to = 2.5}, .y = {.from = 0, .to = 100}},
        .bars = {{.at = 0, .amount = 50, .tint = {SystemColor::blue}, .datum = {"a", "50", "help"}},
            {.at = 1, .amount = 0, .tint = {SystemColor::blue}, .datum = {"b", "0"}},
            {.at = 2, .amount = 130, .tint = {SystemColor::green}, .datum = {"c", "130"}}},
        .thickness = 0.5};
}

TEST(VerticalBars, StandOnTheBaseLine)
{
    const std::vector<Mark> marks = verticalBarMarks(threeBars(), {300, 200}, plainWidths());
    ASSERT_EQ(marks.size(), 3U);
    EXPECT_EQ(marks[0],
        (Mark{.shape = Box{{25, 100, 50, 100}, 2},
            .fills = {{SystemColor::blue}},
            .role = MarkRole::mark,
            .name = "a",
            .value = "50",
            .help = "help"}));
    EXPECT_EQ(marks[1].shape, Shape(Box{{125, 200, 50, 0}, 0})); // listed, though of no size
    EXPECT_EQ(marks[2].shape, Shape(Box{{225, 0, 50, 200}, 2})); // cut off at the domain
    EXPECT_THAT(marks[2].fills, ElementsAre(Tint{SystemColor::green}));
}

TEST(VerticalBars, LeaveOutWhatLiesBeyondTheAxis)
{
    VerticalBarChart chart = threeBars();
    chart.bars[1].at = 3;
    EXPECT_THAT(namesOf(verticalBarMarks(chart, {300, 200}, plainWidths()), MarkRole::mark),
        ElementsAre("a", "c"));
}

TEST(VerticalBars, ShowSomethingForEveryNumber)
{
    VerticalBarChart chart = threeBars();
    chart.bars[0].amount = std::numeric_limits<double>::infinity();
    chart.bars[1].amount = std::nan("");
    chart.bars[2].amount = -5;
    const std::vector<Mark> marks = verticalBarMarks(chart, {300, 200}, plainWidths());
    EXPECT_EQ(bounds(marks[0].shape).height, 200);
    EXPECT_EQ(bounds(marks[1].shape).height, 0);
    EXPECT_EQ(bounds(marks[2].shape).height, 0);
}

TEST(VerticalBars, AreReadBetweenTheLabelsAtTheLeftAndThoseBelow)
{
    VerticalBarChart chart{.axes = {.x = slotAxis({"u", "v"}, "x"), .y = amountAxis(5)},
        .bars = {{.at = 0, .amount = 1, .datum = {"bar"}}}};
    const std::vector<Mark> marks = verticalBarMarks(chart, {300, 200}, plainWidths());
    std::vector<std::string> read;
    for (const Mark& mark : marks) {
        if (mark.role != MarkRole::none) {
            read.push_back(mark.name);
        }
    }
    EXPECT_THAT(read, ElementsAre("0", "1", "2", "3", "4", "5", "bar", "u", "v", "x"));
}

HorizontalBarChart twoRows()
{
    return {.bars = {{.label = "long",
                         .amount = 40,
                         .annotation = "40.0h",
                         .tint = {SystemColor::red},
                         .datum = {"long", "40"}},
                {.label = "b", .amount = 10, .annotation = "10.0h", .datum = {"b", "10"}}},
        .thickness = 0.5,
        .look = kLook,
        .annotations = kAnnotations};
}

TEST(HorizontalBars, LieUnderEachOtherFromTheFirst)
{
    // Labels 16 and a gap of 4 at the left, annotations 20 and a gap of 4 at the right.
    const std::vector<Mark> marks = horizontalBarMarks(twoRows(), {204, 80}, plainWidths());
    ASSERT_EQ(marks.size(), 6U);
    EXPECT_EQ(bounds(marks[0].shape), (Rect{0, 15, 16, 10}));
    EXPECT_EQ(bounds(marks[1].shape), (Rect{0, 55, 16, 10}));
    EXPECT_EQ(marks[2].shape, Shape(Box{{20, 10, 160, 20}, 2}));
    EXPECT_THAT(marks[2].fills, ElementsAre(Tint{SystemColor::red}));
    EXPECT_EQ(bounds(marks[3].shape), (Rect{184, 15, 20, 10}));
    EXPECT_EQ(marks[3].name, "40.0h");
    EXPECT_EQ(marks[4].shape, Shape(Box{{20, 50, 40, 20}, 2}));
    EXPECT_EQ(marks[4].name, "b");
    EXPECT_EQ(marks[4].value, "10");
    EXPECT_EQ(bounds(marks[5].shape).x, 64);
}

TEST(HorizontalBars, MayHaveAnAxisOfTheirOwn)
{
    HorizontalBarChart chart = twoRows();
    chart.amounts = amountAxis(80, "小时");
    const std::vector<Mark> marks = horizontalBarMarks(chart, {204, 80}, plainWidths());
    const std::vector<Mark> bars = marksOf(marks, MarkRole::mark);
    EXPECT_EQ(bounds(bars[0].shape).width, 80);
    EXPECT_EQ(marks.back().name, "小时");
    EXPECT_TRUE(isLegible(marks, {204, 80}));
}

TEST(HorizontalBars, KeepLongNamesAndAnnotationsInThePicture)
{
    HorizontalBarChart chart;
    for (int i = 0; i < 10; ++i) {
        chart.bars.push_back({.label = std::string(40, static_cast<char>('a' + i)),
            .amount = std::pow(10.0, i),
            .annotation = std::string(i == 9 ? 300 : 5, '9'),
            .datum = {"bar"}});
    }
    for (double width = 80; width < 900; width += 9) {
        for (const double height : {60.0, 140.0, 360.0}) {
            const auto marks = horizontalBarMarks(chart, {width, height}, plainWidths());
            ASSERT_TRUE(isLegible(marks, {width, height})) << width << " " << height;
            ASSERT_EQ(marksOf(marks, MarkRole::mark).size(), 10U);
            ASSERT_EQ(marks[0].name, std::string(40, 'a'));
        }
    }
}

TEST(HorizontalBars, OfNothingHaveNoLength)
{
    HorizontalBarChart chart = twoRows();
    chart.bars[0].amount = 0;
    chart.bars[1].amount = 0;
    for (const Mark& bar :
        marksOf(horizontalBarMarks(chart, {204, 80}, plainWidths()), MarkRole::mark)) {
        EXPECT_EQ(bounds(bar.shape).width, 0);
    }
}

} // namespace
} // namespace quillbrook
