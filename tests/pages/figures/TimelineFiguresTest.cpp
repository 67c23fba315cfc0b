#include "pages/figures/TimelineFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

HourUsage usage(const std::string& name, double seconds)
{
    return {.appName = name, .seconds = seconds};
}

HourlyTimelineEntry hourOf(int hour, std::vector<HourUsage> apps)
{
    double total = 0;
    for (HourUsage& app : apps) {
        app.hour = hour;
        total += app.seconds;
    }
    return {.hour = hour, .total = total, .apps = std::move(apps)};
}

TEST(AppColorMapTest, RanksByTheSecondsOfTheWholeDay)
{
    const std::vector timeline{
        hourOf(9, {usage("A", 100), usage("B", 60)}), hourOf(10, {usage("B", 60), usage("C", 30)})};
    EXPECT_THAT(appColorMap(timeline),
        ElementsAre(Pair("B", SystemColor::blue), Pair("A", SystemColor::green),
            Pair("C", SystemColor::orange)));
}

TEST(AppColorMapTest, GivesTheFourteenthTheColorOfTheFirst)
{
    std::vector<HourUsage> apps;
    for (int i = 0; i < 14; ++i) {
        apps.push_back(usage("App" + std::to_string(i), 1000 - i));
    }
    const auto map = appColorMap(std::vector{hourOf(9, apps)});
    EXPECT_EQ(map[12].second, SystemColor::gray);
    EXPECT_EQ(map[13].second, SystemColor::blue);
}

TEST(ColorFor, IsGrayForAnUnknownApplication)
{
    const AppColorMap map{{"A", SystemColor::pink}};
    EXPECT_EQ(colorFor("A", map), SystemColor::pink);
    EXPECT_EQ(colorFor("B", map), SystemColor::gray);
}

TEST(LegendApps, AreTheFirstTen)
{
    std::vector<HourUsage> apps;
    for (int i = 0; i < 12; ++i) {
        apps.push_back(usage("App" + std::to_string(i), 1000 - i));
    }
    const std::vector timeline{hourOf(9, apps)};
    const auto map = appColorMap(timeline);
    EXPECT_THAT(map, SizeIs(12));
    EXPECT_THAT(legendApps(map), SizeIs(10));
    const auto blocks = hourBlocks(timeline[0], map, 760);
    EXPECT_EQ(blocks[10].color, map[10].second);
    EXPECT_EQ(blocks[11].color, map[11].second);
}

TEST(FormatDur, CutsOffBelowAnHour)
{
    EXPECT_EQ(formatDur(59.9), "59s");
    EXPECT_EQ(formatDur(60), "1min");
    EXPECT_EQ(formatDur(3599), "59min");
    EXPECT_EQ(formatDur(3600), "1.0h");
    EXPECT_EQ(formatDur(5400), "1.5h");
}

TEST(DurationLabel, IsEmptyOnlyWithoutSeconds)
{
    EXPECT_EQ(durationLabel(0), "");
    EXPECT_EQ(durationLabel(59), "0m");
    EXPECT_EQ(durationLabel(3599), "59m");
}

TEST(HourText, HasTwoDigits)
{
    EXPECT_EQ(hourText(7), "07:00");
    EXPECT_EQ(hourText(23), "23:00");
}

TEST(HourBlocks, LeaveAMarginBehindAFullHour)
{
    const auto whole = hourBlocks(hourOf(9, {usage("A", 3600)}), {}, 760);
    ASSERT_THAT(whole, SizeIs(1));
    EXPECT_DOUBLE_EQ(whole[0].width, 720);
    EXPECT_DOUBLE_EQ(whole[0].x, 1);

    const auto halves = hourBlocks(hourOf(9, {usage("A", 1800), usage("B", 1800)}), {}, 760);
    ASSERT_THAT(halves, SizeIs(2));
    EXPECT_DOUBLE_EQ(halves[0].width, 360);
    EXPECT_DOUBLE_EQ(halves[1].width, 360);
    EXPECT_DOUBLE_EQ(halves[1].x, 362);
}

TEST(HourBlocks, KeepTheOrderAndLeaveOutZeroSeconds)
{
    const auto blocks
        = hourBlocks(hourOf(9, {usage("A", 10), usage("B", 0), usage("C", 300)}), {}, 760);
    ASSERT_THAT(blocks, SizeIs(2));
    EXPECT_EQ(blocks[0].appName, "A");
    EXPECT_EQ(blocks[1].appName, "C");
}

TEST(HourBlocks, AreEmptyWithoutATotal)
{
    EXPECT_THAT(hourBlocks(hourOf(9, {}), {}, 760), IsEmpty());
    EXPECT_THAT(hourBlocks({.hour = 9, .total = 0, .apps = {usage("A", 60)}}, {}, 760), IsEmpty());
}

TEST(HourBlocks, LabelFromFiveMinutesWhereThereIsRoom)
{
    const auto labelOf = [](double seconds, double rowWidth) {
        return hourBlocks(hourOf(9, {usage("A", seconds)}), {}, rowWidth)[0].label;
    };
    EXPECT_EQ(labelOf(299, 10000), "");
    EXPECT_EQ(labelOf(300, 633), ""); // 49.97 wide
    EXPECT_EQ(labelOf(300, 634), "A (5min)");
    EXPECT_EQ(labelOf(359, 760), "A (5min)");
}

TEST(HourBlocks, AreAtLeastOneWide)
{
    const auto exact = hourBlocks(hourOf(9, {usage("A", 10)}), {}, 380);
    EXPECT_DOUBLE_EQ(exact[0].width, 1);
    EXPECT_DOUBLE_EQ(exact[0].radius, 1);
    const auto thin = hourBlocks(hourOf(9, {usage("A", 1)}), {}, 380);
    EXPECT_DOUBLE_EQ(thin[0].width, 1);
}

TEST(HourBlocks, AreRounderAboveFourWide)
{
    EXPECT_DOUBLE_EQ(hourBlocks(hourOf(9, {usage("A", 40)}), {}, 380)[0].radius, 1);
    EXPECT_DOUBLE_EQ(hourBlocks(hourOf(9, {usage("A", 41)}), {}, 380)[0].radius, 3);
}

TEST(BlockHelp, TellsTheDuration)
{
    EXPECT_EQ(blockHelp({.appName = "A", .seconds = 3600}), "A: 1.0h");
}

TEST(DimFactor, LeavesOnlyTheHighlightedApplicationStrong)
{
    EXPECT_DOUBLE_EQ(dimFactor(std::nullopt, "A"), 1);
    EXPECT_DOUBLE_EQ(dimFactor("A", "A"), 1);
    EXPECT_DOUBLE_EQ(dimFactor("B", "A"), 0.2);
}

TEST(GenerateCSV, IsTheHeaderAloneForAnEmptyDay)
{
    EXPECT_EQ(generateCSV({}), "Hour,App,Seconds,Minutes\n");
}

TEST(GenerateCSV, OrdersByHourThenSeconds)
{
    const std::vector timeline{hourOf(14, {usage("Mail", 59.9), usage("Terminal", 1830)}),
        hourOf(9, {usage("Idle", 0), usage("Editor", 90)})};
    EXPECT_EQ(generateCSV(timeline),
        "Hour,App,Seconds,Minutes\n"
        "9,\"Editor\",90,1.5\n"
        "9,\"Idle\",0,0.0\n"
        "14,\"Terminal\",1830,30.5\n"
        "14,\"Mail\",59,1.0\n");
}

TEST(GenerateCSV, LeavesCommasAndQuotesInNamesAsTheyAre)
{
    const std::vector timeline{hourOf(9, {usage("A, B", 60), usage("C \"D\"", 30)})};
    EXPECT_EQ(generateCSV(timeline),
        "Hour,App,Seconds,Minutes\n"
        "9,\"A, B\",60,1.0\n"
        "9,\"C \"D\"\",30,0.5\n");
}

} // namespace
} // namespace quillbrook
