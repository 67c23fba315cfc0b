#include "base/WholeNumber.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace quillbrook {
namespace {

TEST(WholeNumber, CutsTheFraction)
{
    EXPECT_EQ(wholeNumber(2.999), 2);
    EXPECT_EQ(wholeNumber(-2.999), -2);
}

TEST(WholeNumber, BoundsWhatLiesBeyond)
{
    EXPECT_EQ(wholeNumber(1e300), INT64_MAX);
    EXPECT_EQ(wholeNumber(9223372036854775808.0), INT64_MAX);
    EXPECT_EQ(wholeNumber(-9223372036854775808.0), INT64_MIN);
    EXPECT_EQ(wholeNumber(-std::numeric_limits<double>::infinity()), INT64_MIN);
    EXPECT_EQ(wholeNumber(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(BoundedSum, AddsAndStopsAtTheBounds)
{
    EXPECT_EQ(boundedSum(2, 3), 5);
    EXPECT_EQ(boundedSum(INT64_MAX, -1), INT64_MAX - 1);
    EXPECT_EQ(boundedSum(INT64_MAX, 1), INT64_MAX);
    EXPECT_EQ(boundedSum(-1, INT64_MIN), INT64_MIN);
}

} // namespace
} // namespace quillbrook
