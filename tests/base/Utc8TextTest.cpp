#include "base/Utc8Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

TEST(Utc8Text, IsEightHoursAheadOfUtc)
{
    const double instant = 1767225909; // 2026-01-01T00:05:09Z
    EXPECT_EQ(utc8HourMinute(instant), "08:05");
    EXPECT_EQ(utc8HourMinuteSecond(instant), "08:05:09");
    EXPECT_EQ(utc8SlashedDate(instant), "01/01");
    EXPECT_EQ(utc8DashedDate(instant), "01-01");
}

TEST(Utc8Text, ChangesTheDateAtSixteenHoursUtc)
{
    const double midnight = 1798732800; // 2026-12-31T16:00:00Z
    EXPECT_EQ(utc8HourMinuteSecond(midnight - 0.001), "23:59:59");
    EXPECT_EQ(utc8SlashedDate(midnight - 0.001), "12/31");
    EXPECT_EQ(utc8HourMinuteSecond(midnight), "00:00:00");
    EXPECT_EQ(utc8DashedDate(midnight), "01-01");
}

TEST(Utc8Text, HoldsBefore1970Too)
{
    EXPECT_EQ(utc8HourMinuteSecond(-28801), "23:59:59");
    EXPECT_EQ(utc8SlashedDate(-28801), "12/31");
    EXPECT_EQ(utc8HourMinute(-28800), "00:00");
    EXPECT_EQ(utc8DashedDate(-28800), "01-01");
    EXPECT_EQ(utc8HourMinuteSecond(-0.5), "07:59:59");
}

TEST(Utc8Text, TakesAnyNumberOfADamagedStore)
{
    EXPECT_EQ(utc8HourMinuteSecond(std::numeric_limits<double>::quiet_NaN()), "00:00:00");
    EXPECT_EQ(utc8SlashedDate(std::numeric_limits<double>::infinity()), "12/31");
    EXPECT_EQ(utc8DashedDate(-1e300), "01-01");
}

} // namespace
} // namespace quillbrook
