#include "pages/figures/LocalCalendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillbrook {
namespace {

constexpr double kNoon = 1767240000; // 2026-01-01 12:00 in UTC+8, 04:00 in UTC

LocalCalendar calendarAt(double now, int zone)
{
    return {.now = now, .secondsFromUtc = [zone](double) { return zone; }};
}

TEST(DateLabel, TellsTodayAndYesterday)
{
    const LocalCalendar calendar = calendarAt(kNoon, 28800);
    const double midnight = kNoon - 12 * 3600;
    EXPECT_EQ(dateLabel(kNoon, calendar), "今天");
    EXPECT_EQ(dateLabel(midnight, calendar), "今天");
    EXPECT_EQ(dateLabel(midnight + 86399, calendar), "今天");
    EXPECT_EQ(dateLabel(midnight - 0.5, calendar), "昨天");
    EXPECT_EQ(dateLabel(midnight - 86400, calendar), "昨天");
    EXPECT_EQ(dateLabel(midnight - 86401, calendar), "12/30");
    EXPECT_EQ(dateLabel(midnight + 86400, calendar), "01/02");
}

TEST(DateLabel, AsksTheComputersZoneForTheDayAndUtc8ForTheDate)
{
    // 04:00 in UTC is 20:00 of the day before eight hours to the west.
    const LocalCalendar west = calendarAt(kNoon, -28800);
    EXPECT_EQ(dateLabel(kNoon - 20 * 3600, west), "今天"); // midnight there
    EXPECT_EQ(dateLabel(kNoon - 20 * 3600 - 1, west), "昨天");
    EXPECT_EQ(dateLabel(kNoon - 44 * 3600 - 1, west), "12/30"); // the 29th there
    EXPECT_EQ(dateLabel(kNoon + 4 * 3600, west), "01/01"); // tomorrow there
}

TEST(DateLabel, TakesTheZoneOfTheInstantItself)
{
    // Until noon the clocks were an hour behind.
    const LocalCalendar calendar{
        .now = kNoon, .secondsFromUtc = [](double at) { return at < kNoon ? 25200 : 28800; }};
    EXPECT_EQ(dateLabel(kNoon - 11 * 3600, calendar), "今天"); // 00:00
    EXPECT_EQ(dateLabel(kNoon - 11 * 3600 - 1, calendar), "昨天");
}

TEST(DateLabel, StandsInstantsOfNoCalendar)
{
    const LocalCalendar calendar = calendarAt(kNoon, 28800);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(dateLabel(kInfinity, calendar), "12/31");
    EXPECT_EQ(dateLabel(-kInfinity, calendar), "01/01");
    EXPECT_EQ(dateLabel(std::nan(""), calendar), "01/01");
    EXPECT_FALSE(isToday(kInfinity, calendar));
    EXPECT_TRUE(isToday(kNoon, calendar));
}

} // namespace
} // namespace quillbrook
