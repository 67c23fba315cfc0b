#include "pages/figures/FocusFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;

const TextWidth kFivePoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 5; };

FocusHour row(std::int64_t hour, double activeSec, std::int64_t activeDays)
{
    return {.hour = hour, .activeSec = activeSec, .activeDays = activeDays};
}

std::vector<std::string> valuesOf(const std::vector<FocusHour>& hours)
{
    std::vector<std::string> values;
    for (const FigureContent& card : focusCards(hours)) {
        values.push_back(card.value);
    }
    return values;
}

/// What screen readers find of one role: names and values.
std::vector<std::string> spoken(const std::vector<Mark>& marks, MarkRole role)
{
    std::vector<std::string> texts;
    for (const Mark& mark : marks) {
        if (mark.role == role) {
            texts.push_back(mark.value.empty() ? mark.name : mark.name + "=" + mark.value);
        }
    }
    return texts;
}

const Mark& named(const std::vector<Mark>& marks, const std::string& name)
{
    return *std::find_if(
        marks.begin(), marks.end(), [&](const Mark& mark) { return mark.name == name; });
}

TEST(FocusFigures, HoldAnHourForEachActiveDay)
{
    EXPECT_EQ(activeRatio(row(9, 5760, 2)), 0.8);
    EXPECT_EQ(activeRatio(row(9, 5760, 0)), 0);
    EXPECT_GT(activeRatio(row(9, 7300, 2)), 1);
}

TEST(FocusFigures, AddUpTheActiveHoursAlone)
{
    const std::vector hours{row(8, 1000, 0), row(9, 1799, 1), row(10, 3659, 1)};
    EXPECT_EQ(activeHours(hours).size(), 2U);
    EXPECT_EQ(totalActive(hours), 90); // 5458 s, cut off
    EXPECT_EQ(totalIdle(hours), 30); // 1801 s of nine o'clock, none of ten
    EXPECT_DOUBLE_EQ(overallRatio(hours), 5458.0 / 7200);
}

TEST(FocusFigures, NameTheEarliestOfTheBestHours)
{
    EXPECT_EQ(bestHour(std::vector<FocusHour>{}), std::nullopt);
    EXPECT_EQ(bestHour(std::vector{row(7, 100, 1), row(9, 3240, 1), row(14, 6480, 2)})->hour, 9);
}

TEST(FocusFigures, ShowZerosAndTheFirstHourWithoutActivity)
{
    EXPECT_THAT(
        valuesOf({row(0, 0, 0), row(1, 0, 0)}), ElementsAre("0分钟", "0分钟", "0%", "00:00"));
    EXPECT_THAT(valuesOf({}), ElementsAre("0分钟", "0分钟", "0%", "--:--"));
}

TEST(FocusFigures, FillTheirCards)
{
    const auto cards = focusCards(std::vector{row(9, 2700, 1)});
    EXPECT_THAT(cards,
        ElementsAre(FigureContent{"flame.fill", SystemColor::orange, "45分钟", "活跃"},
            FigureContent{"moon.zzz.fill", SystemColor::indigo, "15分钟", "空闲"},
            FigureContent{"gauge.with.dots.needle.33percent", SystemColor::teal, "75%", "专注度"},
            FigureContent{"star.fill", SystemColor::yellow, "09:00", "最佳时段"}));
}

TEST(FocusFigures, SurviveHugeSums)
{
    const double huge = std::numeric_limits<double>::max();
    EXPECT_EQ(totalActive(std::vector{row(9, huge, 1), row(10, huge / 2, 1)}),
        std::numeric_limits<std::int64_t>::max());
}

TEST(FocusFigures, EndTheAxesAboveTheLargestNumber)
{
    EXPECT_EQ(bucketYMax(std::vector<DurationBucket>{}), 5);
    EXPECT_EQ(bucketYMax(std::vector<DurationBucket>{{.count = 4}}), 5);
    EXPECT_DOUBLE_EQ(bucketYMax(std::vector<DurationBucket>{{.count = 3}, {.count = 10}}), 11.5);
    EXPECT_EQ(dailyAvgYMax(std::vector<DailyAvgSession>{}), 3);
    EXPECT_EQ(dailyAvgYMax(std::vector<DailyAvgSession>{{.avgUnder5 = 0.4}}), 3);
    EXPECT_EQ(dailyAvgYMax(std::vector<DailyAvgSession>{{.avg5to10 = 3}}), 4);
    EXPECT_EQ(dailyAvgYMax(std::vector<DailyAvgSession>{{.avgOver10 = 10}}), 13);
}

/// The grid's lines, which run level.
std::ptrdiff_t gridLines(const std::vector<Mark>& marks)
{
    return std::count_if(marks.begin(), marks.end(), [](const Mark& mark) {
        const auto* line = std::get_if<StraightLine>(&mark.shape);
        return line != nullptr && line->from.y == line->to.y;
    });
}

TEST(ActiveDistributionMarks, AreGreenFromEightyPercentOn)
{
    const auto marks = activeDistributionMarks(
        std::vector{row(9, 5760, 2), row(10, 5759, 2), row(11, 0, 0)}, {600, 200}, kFivePoints);
    EXPECT_EQ(named(marks, "10:00").fills, std::vector<Tint>{{SystemColor::blue}});
    EXPECT_THAT(spoken(marks, MarkRole::mark),
        ElementsAre("09:00=80", testing::StartsWith("10:00=79.9"), "11:00=0"));
    const auto bar = std::find_if(
        marks.begin(), marks.end(), [](const Mark& mark) { return mark.role == MarkRole::mark; });
    EXPECT_EQ(bar->fills, std::vector<Tint>{{SystemColor::green}});
    EXPECT_EQ(bar->help, "09:00: 80%");
}

TEST(ActiveDistributionMarks, CutAnOverfullHourOffAtTheTop)
{
    const auto marks = activeDistributionMarks(
        std::vector{row(3, 7200, 1), row(5, 3600, 1)}, {600, 200}, kFivePoints);
    std::vector<Rect> bars;
    for (const Mark& mark : marks) {
        if (mark.role == MarkRole::mark) {
            bars.push_back(bounds(mark.shape));
        }
    }
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0].height, bars[1].height);
    EXPECT_THAT(spoken(marks, MarkRole::mark), ElementsAre("03:00=200", "05:00=100"));
}

TEST(ActiveDistributionMarks, StandWholeBesideTheNumbersAtTheLeft)
{
    for (const double width : {500.0, 600.0, 1300.0}) {
        const auto marks = activeDistributionMarks(
            std::vector{row(0, 3600, 1), row(23, 3600, 1)}, {width, 200}, kFivePoints);
        const auto bar = [&](int back) { // the last mark that is a bar, or one before it
            std::vector<Rect> bars;
            for (const Mark& mark : marks) {
                if (mark.role == MarkRole::mark) {
                    bars.push_back(bounds(mark.shape));
                }
            }
            return bars.at(bars.size() - 1 - static_cast<std::size_t>(back));
        };
        EXPECT_GE(bar(1).x, right(bounds(named(marks, "100%").shape)));
        EXPECT_LE(right(bar(0)), width);
        const Rect label = bounds(named(marks, "00:00").shape);
        EXPECT_NEAR(center(label).x, center(bar(1)).x, 1e-9);
    }
}

TEST(ActiveDistributionMarks, LabelEverySecondHourAndTheQuarters)
{
    const auto marks
        = activeDistributionMarks(std::vector{row(0, 60, 1)}, {1200, 200}, kFivePoints);
    const auto texts = spoken(marks, MarkRole::text);
    for (const char* text :
        {"00:00", "02:00", "22:00", "0%", "25%", "50%", "75%", "100%", "小时", "%"}) {
        EXPECT_THAT(texts, testing::Contains(text));
    }
    EXPECT_THAT(texts, testing::Not(testing::Contains("01:00")));
    EXPECT_EQ(gridLines(marks), 5);
    EXPECT_EQ(named(marks, "02:00").texts[0].face.pixels, 9);
    EXPECT_EQ(named(marks, "75%").texts[0].face.pixels, 9);
}

TEST(DurationBucketMarks, AreABarForEachLength)
{
    const auto marks = durationBucketMarks(
        std::vector<DurationBucket>{{.label = "<1min", .count = 4}, {.label = ">1h", .count = 1}},
        {300, 180}, kFivePoints);
    EXPECT_THAT(spoken(marks, MarkRole::mark), ElementsAre("<1min=4", ">1h=1"));
    EXPECT_THAT(spoken(marks, MarkRole::text),
        testing::IsSupersetOf({"<1min", ">1h", "Session 时长", "次数"}));
    EXPECT_EQ(std::count_if(marks.begin(), marks.end(),
                  [](const Mark& mark) {
                      return mark.role == MarkRole::mark
                          && mark.fills == std::vector<Tint>{{SystemColor::orange}};
                  }),
        2);
    // Four are the most here, and the axis runs to five.
    EXPECT_THAT(spoken(marks, MarkRole::text),
        ElementsAre("0", "1", "2", "3", "4", "5", "<1min", ">1h", "Session 时长", "次数"));
    EXPECT_EQ(gridLines(marks), 6);
    EXPECT_EQ(named(marks, "5").texts[0].face.pixels, 8);
}

TEST(DailyAvgMarks, AreThreeLinesOverTheDays)
{
    const auto marks = dailyAvgMarks(
        std::vector<DailyAvgSession>{
            {.date = "11-20", .avgUnder5 = 2.5, .avg5to10 = 7, .avgOver10 = 15},
            {.date = "11-21", .avgUnder5 = 1, .avg5to10 = 0, .avgOver10 = 12.25}},
        {300, 180}, kFivePoints);
    EXPECT_THAT(spoken(marks, MarkRole::mark),
        ElementsAre("<5分钟 11-20=2.5", "<5分钟 11-21=1", "5-10分钟 11-20=7", "5-10分钟 11-21=0",
            ">10分钟 11-20=15", ">10分钟 11-21=12.25"));
    EXPECT_THAT(spoken(marks, MarkRole::text),
        testing::IsSupersetOf({"日期", "分钟", "<5分钟", "5-10分钟", ">10分钟", "11-20", "11-21"}));
}

TEST(DailyAvgMarks, HaveTheirColoursAndTheirLegendApart)
{
    const auto marks = dailyAvgMarks(
        std::vector<DailyAvgSession>{
            {.date = "11-20", .avgUnder5 = 1, .avg5to10 = 2, .avgOver10 = 3}},
        {300, 180}, kFivePoints);
    std::vector<std::vector<Tint>> dots;
    for (const Mark& mark : marks) {
        if (!mark.fills.empty()) {
            dots.push_back(mark.fills);
        }
    }
    const std::vector<Tint> blue{{SystemColor::blue}};
    const std::vector<Tint> orange{{SystemColor::orange}};
    const std::vector<Tint> green{{SystemColor::green}};
    EXPECT_THAT(dots, ElementsAre(blue, orange, green, blue, orange, green)); // and the legend's
    // Three is the most here, and the axis runs to four.
    EXPECT_THAT(spoken(marks, MarkRole::text),
        ElementsAre(
            "0", "1", "2", "3", "4", "11-20", "日期", "分钟", "<5分钟", "5-10分钟", ">10分钟"));
    EXPECT_EQ(gridLines(marks), 5);
    EXPECT_EQ(named(marks, "11-20").texts[0].face.pixels, 8);
    EXPECT_EQ(
        bounds(named(marks, "<5分钟").shape).y - bottom(bounds(named(marks, "日期").shape)), 20);
}

} // namespace
} // namespace quillbrook
