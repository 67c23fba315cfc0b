#include "report/ReportRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

std::string text(double seconds)
{
    const std::string ofSession = durationText(SessionDetail{.durationSec = seconds});
    EXPECT_EQ(durationText(IdleRecord{.durationSec = seconds}), ofSession);
    return ofSession;
}

TEST(DurationText, TakesItsUnitBeforeRounding)
{
    EXPECT_EQ(text(0), "0秒");
    EXPECT_EQ(text(59.4), "59秒");
    EXPECT_EQ(text(59.9), "60秒");
    EXPECT_EQ(text(60), "1.0分钟");
    EXPECT_EQ(text(3599), "60.0分钟");
    EXPECT_EQ(text(3600), "1.00小时");
    EXPECT_EQ(text(5400.9), "1.50小时");
}

TEST(DurationText, RoundsHalvesToEven)
{
    EXPECT_EQ(text(0.5), "0秒");
    EXPECT_EQ(text(1.5), "2秒");
    EXPECT_EQ(text(2.5), "2秒");
}

TEST(DurationText, TakesAnyNumberOfADamagedStore)
{
    EXPECT_EQ(text(-5), "-5秒");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "0秒");
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN()), "0秒");
}

TEST(ReportRecords, AreToldApartBuiltFromEqualRows)
{
    EXPECT_NE(AlertRecord{}.id, AlertRecord{}.id);
    EXPECT_NE(AppUsage{}.id, AppUsage{}.id);
    EXPECT_NE(SessionDetail{}.id, SessionDetail{}.id);
}

TEST(ReportRecords, AreEmptyAtFirst)
{
    const DashboardData data;
    EXPECT_FALSE(data.overview.has_value());
    EXPECT_FALSE(data.historyOverview.has_value());
    EXPECT_TRUE(data.keylogHourly.empty());
    EXPECT_EQ(data.tpm, 0);
}

} // namespace
} // namespace quillbrook
