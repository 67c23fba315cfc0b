#include "pages/marks/AxisMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ChartLook kLook{
    .labels = {.pixels = 8}, .titles = {.pixels = 8}, .legend = {.pixels = 8}};
// 4 a letter, 10 a line

std::vector<Mark> allMarks(const ChartFrame& frame)
{
    std::vector<Mark> all = frame.behind;
    all.insert(all.end(), frame.around.begin(), frame.around.end());
    return all;
}

std::vector<std::string> textsOf(const Axis& axis)
{
    std::vector<std::string> texts;
    for (const AxisMark& mark : axis.marks) {
        texts.push_back(mark.text);
    }
    return texts;
}

TEST(Axis, OfAmountsIsMarkedAutomatically)
{
    const Axis axis = amountAxis(13, "分钟");
    EXPECT_EQ(axis.from, 0);
    EXPECT_EQ(axis.to, 13);
    EXPECT_TRUE(axis.hasGrid);
    EXPECT_EQ(axis.title, "分钟");
    EXPECT_THAT(axis.marks, ElementsAre(AxisMark{0, "0"}, AxisMark{5, "5"}, AxisMark{10, "10"}));
    EXPECT_EQ(amountAxis(0).to, 1);
    EXPECT_EQ(amountAxis(std::numeric_limits<double>::infinity()).to, 1e300);
}

TEST(Axis, OfSlotsGivesEachLabelTheSameRoom)
{
    const Axis axis = slotAxis({"a", "b", "c"});
    EXPECT_EQ(axis.from, -0.5);
    EXPECT_EQ(axis.to, 2.5);
    EXPECT_THAT(axis.marks, ElementsAre(AxisMark{0, "a"}, AxisMark{1, "b"}, AxisMark{2, "c"}));
    EXPECT_FALSE(axis.hasGrid);
}

TEST(Axis, OfDaysIsLabelledWithMonthAndDay)
{
    const Axis axis = dayAxis(20698, 20701); // from 2026-09-02
    EXPECT_EQ(axis.from, 20698);
    EXPECT_EQ(axis.to, 20701);
    EXPECT_THAT(textsOf(axis), ElementsAre("09/2", "09/3", "09/4", "09/5"));
    EXPECT_THAT(textsOf(dayAxis(20726, 20727)), ElementsAre("09/30", "10/1"));
}

TEST(Axis, OfOneDayTakesItAll)
{
    const Axis axis = dayAxis(20698, 20698);
    EXPECT_EQ(axis.from, 20697.5);
    EXPECT_EQ(axis.to, 20698.5);
    EXPECT_THAT(textsOf(axis), ElementsAre("09/2"));
}

TEST(ChartFrame, OfBareAxesIsAllPlot)
{
    const ChartFrame frame = chartFrame({}, {200, 100}, plainWidths());
    EXPECT_EQ(frame.plot, (Rect{0, 0, 200, 100}));
    EXPECT_THAT(allMarks(frame), IsEmpty());
}

TEST(ChartFrame, LeavesRoomForAllThatStandsAroundThePlot)
{
    ChartAxes axes{.x = slotAxis({"aa", "bb"}, "day"), .y = amountAxis(10, "%"), .look = kLook};
    axes.legend = {{"one", {SystemColor::blue}}};
    axes.look.legendGap = 20;
    const ChartFrame frame = chartFrame(axes, {112, 200}, plainWidths());
    // Left: "10" is 8 wide, then 4. Top: title 10, gap 4, half a label 5. From below: legend 10, 20
    // above it, title 10, labels 10, gap 4, and 1 more that half a label at the left needs.
    EXPECT_EQ(frame.plot, (Rect{12, 19, 100, 126}));
    EXPECT_EQ(frame.x, (Scale{-0.5, 1.5, 12, 112}));
    EXPECT_EQ(frame.y, (Scale{0, 10, 145, 19}));
    const std::vector<Mark> labels = marksOf(frame.behind, MarkRole::text);
    ASSERT_EQ(labels.size(), 6U);
    EXPECT_EQ(bounds(labels[0].shape), (Rect{0, 140, 8, 10}));
    EXPECT_EQ(bounds(labels[5].shape), (Rect{0, 14, 8, 10}));
    EXPECT_EQ(labels[5].texts[0].alignment, TextAlignment::trailing);
    EXPECT_THAT(namesOf(frame.behind, MarkRole::text), ElementsAre("0", "2", "4", "6", "8", "10"));
    EXPECT_THAT(namesOf(frame.around, MarkRole::text), ElementsAre("aa", "bb", "day", "%", "one"));
    EXPECT_EQ(bounds(frame.around[0].shape), (Rect{33, 150, 8, 10}));
    EXPECT_EQ(bounds(frame.around[2].shape), (Rect{56, 160, 12, 10}));
    EXPECT_EQ(bounds(frame.around[3].shape), (Rect{0, 0, 112, 10}));
    EXPECT_EQ(bounds(frame.around[5].shape), (Rect{56, 190, 12, 10}));
    EXPECT_TRUE(isLegible(allMarks(frame), {112, 200}));
}

TEST(ChartFrame, DrawsItsGridAcrossThePlot)
{
    Axis percent{.from = 0, .to = 100, .marks = {{0, "0%"}, {50, "50%"}}, .hasGrid = true};
    const ChartFrame frame = chartFrame({.y = percent, .look = kLook}, {116, 105}, plainWidths());
    // "50%" is 12 wide, then 4; half a label below.
    EXPECT_EQ(frame.plot, (Rect{16, 0, 100, 100}));
    EXPECT_EQ(frame.behind[0], lineMark({16, 100}, {116, 100}, kLook.grid));
    EXPECT_EQ(frame.behind[1], lineMark({16, 50}, {116, 50}, kLook.grid));
}

TEST(ChartFrame, MayKeepItsDomainOffTheEndsOfThePlot)
{
    Axis x{.from = 0, .to = 3, .marks = {{0, "a"}, {3, "b"}}, .margin = 0.5};
    const ChartFrame frame = chartFrame({.x = x, .look = kLook}, {200, 100}, plainWidths());
    EXPECT_EQ(frame.plot.x, 0);
    EXPECT_EQ(frame.plot.width, 200);
    EXPECT_EQ(frame.x, (Scale{0, 3, 25, 175})); // four units of 50
    EXPECT_EQ(bounds(frame.around[0].shape), (Rect{23, 90, 4, 10}));
}

TEST(ChartFrame, WritesNamesAsCloseAsTheyCanBeToldApart)
{
    const auto namesAt = [](double width) {
        return namesOf(chartFrame({.x = slotAxis({"12345", "12345", "12345"}), .look = kLook},
                           {width, 100}, plainWidths())
                           .around,
            MarkRole::text);
    };
    EXPECT_THAT(namesAt(69), ElementsAre("12345", "12345", "12345")); // 20 wide, 3 between them
    EXPECT_THAT(namesAt(68), ElementsAre("12345", "12345"));
}

TEST(ChartFrame, KeepsALastLabelUnderItsMark)
{
    Axis x{.from = 0, .to = 10, .marks = {{0, "0000"}, {10, "1010"}}};
    const ChartFrame frame = chartFrame({.x = x, .look = kLook}, {200, 100}, plainWidths());
    EXPECT_EQ(frame.plot.x, 8);
    EXPECT_EQ(right(frame.plot), 192);
    EXPECT_EQ(bounds(frame.around[1].shape), (Rect{184, 90, 16, 10}));
}

TEST(ChartFrame, KeepsDatesHoursAndNamesLegible)
{
    std::vector<std::string> hours;
    for (int hour = 0; hour < 24; ++hour) {
        hours.push_back((hour < 10 ? "0" : "") + std::to_string(hour) + ":00");
    }
    const std::vector<Axis> below{dayAxis(20698, 20712), slotAxis(hours, "hour"),
        slotAxis({"0-5min", "5-10min", "10-25min", "25-60min", ">60min"}),
        slotAxis(std::vector<std::string>(6, std::string(40, 'n')))};
    const std::vector<Axis> left{
        amountAxis(11.5, "count"), slotAxis(std::vector<std::string>(9, std::string(40, 'm')))};
    for (const Axis& x : below) {
        for (const Axis& y : left) {
            for (double width = 60; width < 900; width += 7) {
                ChartAxes axes{.x = x, .y = y, .look = kLook};
                axes.legend.assign(5, {"a series"});
                const ChartFrame frame = chartFrame(axes, {width, 180}, plainWidths());
                ASSERT_TRUE(isLegible(allMarks(frame), {width, 180})) << width;
                ASSERT_EQ(frame.behind.back().role, MarkRole::text);
                ASSERT_EQ(frame.around.front().name, x.marks.front().text);
                ASSERT_GT(frame.plot.width, width * 0.25);
                ASSERT_GT(frame.plot.height, 30);
            }
        }
    }
}

TEST(ChartFrame, ThinsFifteenDatesEvenly)
{
    const ChartFrame frame
        = chartFrame({.x = dayAxis(20698, 20712), .look = kLook}, {300, 100}, plainWidths());
    EXPECT_THAT(namesOf(frame.around, MarkRole::text),
        ElementsAre("09/2", "09/4", "09/6", "09/8", "09/10", "09/12", "09/14", "09/16"));
}

TEST(ChartFrame, TellsTheWholeOfAnElidedLabel)
{
    const std::string name(40, 'm');
    const ChartFrame frame
        = chartFrame({.y = slotAxis({name, "short"}), .look = kLook}, {200, 100}, plainWidths());
    EXPECT_EQ(bounds(frame.behind[0].shape).width, 80); // 0.4 of the picture
    EXPECT_EQ(frame.behind[0].name, name);
    EXPECT_EQ(frame.behind[0].help, name);
    EXPECT_EQ(frame.behind[1].help, "");
}

TEST(ChartFrame, StandsAnySize)
{
    ChartAxes axes{.x = slotAxis({"aa", "bb"}, "day"), .y = amountAxis(10, "%"), .look = kLook};
    axes.legend = {{"one", {SystemColor::blue}}};
    for (const Size size : {Size{0, 0}, Size{-5, -5}, Size{3, 3}, Size{500, 2}, Size{2, 500}}) {
        const ChartFrame frame = chartFrame(axes, size, plainWidths());
        EXPECT_GE(frame.plot.width, 1);
        EXPECT_GE(frame.plot.height, 0);
    }
}

} // namespace
} // namespace quillbrook
