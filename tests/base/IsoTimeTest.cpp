#include "base/IsoTime.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

TEST(IsoTime, CutsSecondsOff)
{
    EXPECT_EQ(isoTime(1767225600.999), "2026-01-01T00:00:00Z");
    EXPECT_EQ(isoTime(-0.5), "1969-12-31T23:59:59Z");
}

TEST(IsoTime, StaysWithinFourDigitsOfYears)
{
    EXPECT_EQ(isoTime(1e300), "9999-12-31T23:59:59Z");
    EXPECT_EQ(isoTime(-1e300), "0000-01-01T00:00:00Z");
    EXPECT_EQ(isoTime(std::numeric_limits<double>::quiet_NaN()), "1970-01-01T00:00:00Z");
}

TEST(IsoTime, InAZoneShowsTheDifferenceAndMilliseconds)
{
    EXPECT_EQ(isoTimeInZone(1772328612.345, 28800), "2026-03-01T09:30:12.345+08:00");
    EXPECT_EQ(isoTimeInZone(1772328612.9996, -12600), "2026-02-28T22:00:12.999-03:30");
    EXPECT_EQ(isoTimeInZone(1772328612, 0), "2026-03-01T01:30:12.000Z");
}

} // namespace
} // namespace quillbrook
