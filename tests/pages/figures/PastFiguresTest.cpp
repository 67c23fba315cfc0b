#include "pages/figures/PastFigures.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(MetricCards, ShowThePeriod)
{
    const auto cards = metricCards({.totalActiveHours = 123.456,
        .activeAppCount = 12,
        .appSwitchCount = 4321,
        .bootCount = 1});
    EXPECT_EQ(cards[0], (FigureContent{"clock.fill", SystemColor::blue, "123.5 h", "活跃时长"}));
    EXPECT_EQ(
        cards[1], (FigureContent{"app.badge.fill", SystemColor::orange, "12 个", "活跃应用"}));
    EXPECT_EQ(cards[2],
        (FigureContent{"arrow.left.arrow.right", SystemColor::purple, "4321", "切换次数"}));
    EXPECT_EQ(cards[3], (FigureContent{"power", SystemColor::green, "1 次", "开关机"}));
}

TEST(MetricCards, WarnFromTheSecondBootOn)
{
    EXPECT_EQ(metricCards({.bootCount = 0})[3].color, SystemColor::green);
    EXPECT_EQ(metricCards({.bootCount = 1})[3].color, SystemColor::green);
    EXPECT_EQ(metricCards({.bootCount = 2})[3].color, SystemColor::red);
}

} // namespace
} // namespace quillbrook
