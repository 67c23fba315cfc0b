#include "pages/views/FocusView.h"

#include "pages/kit/MarkView.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

using FocusViewTest = PagesFixture;

DashboardData focusData()
{
    return {.focusHours = {{.hour = 9, .activeSec = 2880, .activeDays = 1},
                {.hour = 10, .activeSec = 0, .activeDays = 0}},
        .durationBuckets = {{.label = "<1分钟", .count = 4}},
        .dailyAvgSessions = {{.date = "01-01", .avgUnder5 = 2}}};
}

TEST_F(FocusViewTest, ShowsFiguresAndThreeCharts)
{
    const auto page = shownPage<FocusView>(focusData());
    const auto texts = elementsOf(*page, QAccessible::StaticText);
    EXPECT_THAT(namesOf(texts),
        IsSupersetOf({"Focus 分析", "活跃", "空闲", "专注度", "最佳时段", "活跃时长分布",
            "该小时活跃秒数 / (有活跃天数 × 60分钟) ● 绿色=高效(≥80%)", "番茄钟分布",
            "近7天日均番茄钟", "应如所住，而生其心。"}));
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator),
        ElementsAre(Element{QAccessible::Indicator, "09:00", "80"},
            Element{QAccessible::Indicator, "10:00", "0"},
            Element{QAccessible::Indicator, "<1分钟", "4"},
            Element{QAccessible::Indicator, "<5分钟 01-01", "2"},
            Element{QAccessible::Indicator, "5-10分钟 01-01", "0"},
            Element{QAccessible::Indicator, ">10分钟 01-01", "0"}));
}

TEST_F(FocusViewTest, SaysWhereThereIsNothing)
{
    const auto page = shownPage<FocusView>({.focusHours = {{.hour = 0}}});
    const auto names = namesOf(elementsOf(*page, QAccessible::StaticText));
    EXPECT_EQ(std::count(names.begin(), names.end(), "暂无数据"), 3);
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator), IsEmpty());
}

TEST_F(FocusViewTest, RefreshesAtThePressOfItsButton)
{
    const auto page = shownPage<FocusView>({});
    machine.runFor(0); // the refresh of the provider's making
    int published = 0;
    const Subscription counted = provider.data.observe([&](const auto&) { ++published; });
    button(*page, "刷新").click();
    machine.runFor(0);
    EXPECT_EQ(published, 1);
}

TEST_F(FocusViewTest, SetsThePeriodThatIsPicked)
{
    const auto page = shownPage<FocusView>({});
    button(*page, "全部").click();
    EXPECT_EQ(provider.focusPeriod.get(), FocusPeriod::all);
}

} // namespace
} // namespace quillbrook
