#include "pages/figures/TodayFigures.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

TEST(ActiveMinutesStr, ShowsHoursFromSixtyMinutesOn)
{
    EXPECT_EQ(activeMinutesStr(0), "0m");
    EXPECT_EQ(activeMinutesStr(0.5), "30m");
    EXPECT_EQ(activeMinutesStr(1.0), "1h0m");
    EXPECT_EQ(activeMinutesStr(25.25), "25h15m");
}

TEST(ActiveMinutesStr, CutsMinutesOff)
{
    EXPECT_EQ(activeMinutesStr(2.0833), "2h4m"); // 124.998 minutes
    EXPECT_EQ(activeMinutesStr(0.9999), "59m");
}

TEST(ActiveMinutesStrDeathTest, StopsAtWhatIsNoNumber)
{
    EXPECT_DEATH(activeMinutesStr(std::numeric_limits<double>::quiet_NaN()), "truncated");
    EXPECT_DEATH(activeMinutesStr(1e300), "truncated");
}

TEST(LongestFocusStr, CutsMinutesOff)
{
    EXPECT_EQ(longestFocusStr(59.99), "59m");
    EXPECT_EQ(longestFocusStr(60), "1h0m");
}

TEST(FirstActivityString, IsTheTimeInUtc8WhateverTheZone)
{
    EXPECT_EQ(firstActivityString(1767198600), "00:30"); // 2025-12-31 16:30 UTC
    EXPECT_EQ(firstActivityString(1767225600 - 0.5), "07:59");
    EXPECT_EQ(firstActivityString(1767225600), "08:00");
}

TEST(FirstActivityString, IsDashesWithoutActivity)
{
    EXPECT_EQ(firstActivityString(std::nullopt), "--:--");
}

TEST(FormatCount, GroupsThousandsAndCountsInTenThousands)
{
    EXPECT_EQ(formatCount(0), "0");
    EXPECT_EQ(formatCount(999), "999");
    EXPECT_EQ(formatCount(1000), "1,000");
    EXPECT_EQ(formatCount(1005), "1,005");
    EXPECT_EQ(formatCount(9999), "9,999");
    EXPECT_EQ(formatCount(10000), "1.0 万");
    EXPECT_EQ(formatCount(12345), "1.2 万");
}

TEST(FormatCount, LeavesNegativesPlain)
{
    EXPECT_EQ(formatCount(-5), "-5");
    EXPECT_EQ(formatCount(-12345), "-12345");
}

TEST(OverviewCards, ShowTheDay)
{
    const TodayOverview overview{.firstActivity = 1767225600,
        .totalActiveHours = 3.5,
        .sessionCount = 42,
        .appSwitchCount = 42,
        .longestSessionMinutes = 75.9};
    const auto cards = overviewCards(overview, 7, 12345);
    EXPECT_EQ(cards[0], (FigureContent{"arrow.up.right", SystemColor::teal, "08:00", "42 个会话"}));
    EXPECT_EQ(
        cards[1], (FigureContent{"clock.fill", SystemColor::blue, "3h30m", "单次最长 1h15m"}));
    EXPECT_EQ(
        cards[2], (FigureContent{"app.badge.fill", SystemColor::orange, "7 个", "切换 42 次"}));
    EXPECT_EQ(cards[3],
        (FigureContent{"hand.point.up.braille", SystemColor::cyan, "1.2 万", "今日键盘输入"}));
}

TEST(OverviewCards, ShowTheOtherFiguresWithoutAFirstActivity)
{
    const auto cards = overviewCards(TodayOverview{.sessionCount = 3}, 2, 10);
    EXPECT_EQ(cards[0].value, "--:--");
    EXPECT_EQ(cards[0].title, "3 个会话");
    EXPECT_EQ(cards[2].value, "2 个");
    EXPECT_EQ(cards[3].value, "10");
}

TEST(KpiInfoItems, ExplainTheCardsInTheirOrder)
{
    const auto items = kpiInfoItems();
    const auto cards = overviewCards({}, 0, 0);
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i].symbol, cards[i].symbol);
        EXPECT_EQ(items[i].color, cards[i].color);
    }
}

TEST(KpiInfoItems, TellWhatTheFiguresMean)
{
    const auto items = kpiInfoItems();
    EXPECT_EQ(items[0].name, "活跃时长");
    EXPECT_EQ(items[0].detail,
        "今日所有应用会话 duration 的总分钟数。首次活跃时间为今天最早的 started_at 时刻。");
    EXPECT_EQ(items[1].name, "最长专注");
    EXPECT_EQ(items[1].detail, "今日单次 session 的最长 duration，反映最专注的工作时段。");
    EXPECT_EQ(items[2].name, "应用");
    EXPECT_EQ(items[2].detail,
        R"(今日使用过的不同应用数量。"切换 N 次"等于会话数，即前台应用变更的次数。)");
    EXPECT_EQ(items[3].name, "击键次数");
    EXPECT_EQ(items[3].detail,
        "来自 keylog 工具采集的全局 keyDown 事件计数。"
        "Token 换算按输入法类型：英文≈0.248/键，双拼≈0.267/键，其他≈0.152/键。");
}

} // namespace
} // namespace quillbrook
