#include "base/Utc8Day.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

TEST(Utc8Day, ChangesAtSixteenHoursUtc)
{
    EXPECT_EQ(utc8DayNumber(1767225599), 20454); // 2025-12-31T23:59:59Z
    EXPECT_EQ(utc8DayNumber(1767196799.999), 20453); // 2025-12-31T15:59:59.999Z
    EXPECT_EQ(utc8DayNumber(1767196800), 20454);
}

TEST(Utc8Day, StartsAtSixteenHoursUtcOfTheDayBefore)
{
    EXPECT_EQ(utc8DayStart(20454), 1767196800);
}

TEST(Utc8Day, TakesAnyNumberOfADamagedStore)
{
    EXPECT_EQ(utc8DayNumber(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_GT(utc8DayNumber(std::numeric_limits<double>::infinity()), 0);
}

} // namespace
} // namespace quillbrook
