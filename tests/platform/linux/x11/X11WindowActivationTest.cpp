#include "platform/linux/x11/X11WindowActivation.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(StartupTime, StandsAtTheEndOfTheIdentifier)
{
    EXPECT_EQ(startupTime("panel-4711-host_TIME123456"), 123456U);
    EXPECT_EQ(startupTime("a_TIME1-b_TIME4294967295"), 4294967295U);
}

TEST(StartupTime, IsMissingWhereNoneIsTold)
{
    for (const char* startupId :
        {"", "panel-4711-host", "x_TIME", "x_TIME12a", "x_TIME-1", "x_TIME4294967296", "x_TIME0"}) {
        EXPECT_EQ(startupTime(startupId), std::nullopt) << startupId;
    }
}

TEST(RequestTime, IsThatOfALaunchOfThisMoment)
{
    EXPECT_EQ(requestTime("x_TIME10000", 10000), 10000U);
    EXPECT_EQ(requestTime("x_TIME10000", 40000), 10000U);
    EXPECT_EQ(requestTime("x_TIME4294967295", 500), 4294967295U); // the clock has turned
}

TEST(RequestTime, IsThePresentForALaunchOfLongAgoOrOfTheFuture)
{
    EXPECT_EQ(requestTime("x_TIME10000", 40001), 40001U);
    EXPECT_EQ(requestTime("x_TIME10000", 9999), 9999U);
    EXPECT_EQ(requestTime("", 9999), 9999U);
}

} // namespace
} // namespace quillbrook
