#include "pages/figures/AboutFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr double kMidnight = 1767196800; // of 2026-01-01 in UTC+8

LocalCalendar calendarAt(double now, int secondsFromUtc)
{
    return {.now = now, .secondsFromUtc = [secondsFromUtc](double) { return secondsFromUtc; }};
}

TEST(AboutValues, AreThoseOfThePackage)
{
    EXPECT_EQ(aboutValues("2.3.4", "2026-03-01", calendarAt(kMidnight, 28800)),
        (AboutValues{.version = "2.3.4", .buildDate = "2026-03-01"}));
    EXPECT_EQ(aboutValues("", "", calendarAt(kMidnight, 28800)), AboutValues{}); // texts, too
}

TEST(AboutValues, HaveAVersionWithoutOneInThePackage)
{
    EXPECT_EQ(versionText(aboutValues(std::nullopt, "x", calendarAt(0, 0))), "v0.13.0");
}

TEST(AboutValues, TellTodayInTheComputersZoneWithoutABuildDate)
{
    const auto dateAt = [](double now, int zone) {
        return buildDateText(aboutValues("1", std::nullopt, calendarAt(now, zone)));
    };
    EXPECT_EQ(dateAt(kMidnight, 28800), "构建于 2026-01-01");
    EXPECT_EQ(dateAt(kMidnight - 0.5, 28800), "构建于 2025-12-31");
    EXPECT_EQ(dateAt(kMidnight, 0), "构建于 2025-12-31");
    EXPECT_EQ(dateAt(kMidnight, -28800), "构建于 2025-12-31");
}

TEST(Features, StandInTheirOrder)
{
    std::vector<std::string> rows;
    for (const Feature& feature : kFeatures) {
        rows.push_back(std::string(feature.symbol) + "|" + std::string(feature.title) + "|"
            + std::string(feature.detail));
    }
    EXPECT_THAT(rows,
        ElementsAre("app.badge|前台应用追踪|自动记录每个应用的使用时长和切换次数",
            "cpu|系统资源监控|CPU / 内存 / Swap / 负载 实时采集，每 60 秒快照",
            "keyboard|键盘活动统计|击键次数 & token 消耗估算（需 keylog 采集）",
            "exclamationmark.triangle|智能告警|高负载 / 内存不足 / 图形异常时自动推送通知",
            "chart.bar|可视化报告|时间线 / 条形图 / 告警历史 / 键盘活动",
            "chart.bar.doc.horizontal|习惯追踪|应用使用分类统计、时长占比与时段分析",
            "heart.fill|iLife 生命进度|"
            "年度进度可视化 + 生命格子（基于上海人均寿命 84.11 岁）"));
}

TEST(Features, HaveTheirColors)
{
    std::vector<SystemColor> colors;
    for (const Feature& feature : kFeatures) {
        colors.push_back(feature.color);
    }
    EXPECT_THAT(colors,
        ElementsAre(SystemColor::blue, SystemColor::green, SystemColor::purple, SystemColor::orange,
            SystemColor::teal, SystemColor::indigo, SystemColor::red));
}

TEST(TechnologyOn, SaysOfEachSystemWhatIsTrueThere)
{
    EXPECT_EQ(technologyOn(SystemKind::macOS).line, "零第三方依赖，纯 macOS 原生");
    const Technology onLinux = technologyOn(SystemKind::linuxDesktop);
    EXPECT_EQ(onLinux.line, "Linux 原生程序，只用发行版提供的开源库");
    EXPECT_THAT(onLinux.tags,
        ElementsAre("C++20", "Qt 6", "SQLite", "XCB", "Wayland", "D-Bus", "libcanberra"));
    EXPECT_THAT(technologyOn(SystemKind::macOS).tags, ElementsAre("C++20", "Qt 6", "SQLite"));
}

TEST(Maker, LeadsToNoSiteWhileThereIsNone)
{
    EXPECT_EQ(kMaker.site, "");
    EXPECT_THAT(std::string(kMaker.privacyPage), testing::EndsWith("/privacy_quillbrook"));
}

} // namespace
} // namespace quillbrook
