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

} // namespace
} // namespace quillbrook
