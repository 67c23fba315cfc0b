#include "pages/views/HabitView.h"

#include "base/Utc8Day.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/Section.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using HabitViewTest = PagesFixture;

DashboardData habitData()
{
    return {
        .categoryUsage = {{.category = "development", .label = "开发工具", .totalSeconds = 5400},
            {.category = "browser", .label = "浏览器", .totalSeconds = 1800}}};
}

TEST_F(HabitViewTest, SaysWhereThereIsNothing)
{
    const auto page = shownPage<HabitView>({});
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        ElementsAre("Habits Shape Us", "暂无数据", "分类时长排序", "暂无数据",
            "分类时长趋势（近15天）", "加载中…",
            "What you do today shapes who you become tomorrow"));
}

TEST_F(HabitViewTest, ShowsTheCategoriesAsCellsAndBars)
{
    const auto page = shownPage<HabitView>(habitData());
    EXPECT_THAT(elementsOf(*page, QAccessible::Cell),
        ElementsAre(Element{QAccessible::Cell, "开发工具", "1.5h"},
            Element{QAccessible::Cell, "浏览器", "0.5h"}));
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator),
        ElementsAre(Element{QAccessible::Indicator, "开发工具", "1.5"},
            Element{QAccessible::Indicator, "浏览器", "0.5"}));
}

TEST_F(HabitViewTest, KeepsAnEmptyFrameForCategoriesWithoutTime)
{
    const auto page = shownPage<HabitView>({.categoryUsage = {{.label = "开发工具"}}});
    EXPECT_THAT(elementsOf(*page, QAccessible::Cell), IsEmpty());
    EXPECT_THAT(
        namesOf(elementsOf(*page, QAccessible::StaticText)), testing::Not(Contains("暂无数据")));
}

TEST_F(HabitViewTest, ShowsTheTrendWhenItComes)
{
    const auto page = shownPage<HabitView>(habitData());
    provider.categoryTrend.set(
        {{.date = utc8DayStart(20454), .category = "browser", .label = "浏览器", .hours = 2}});
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator),
        Contains(Element{QAccessible::Indicator, "浏览器 01-01", "1"}));
}

TEST_F(HabitViewTest, GivesTwoFifthsToTheRankingAndTheRestToTheTrend)
{
    const auto page = shownPage<HabitView>(habitData());
    const auto sections = page->findChildren<Section*>();
    ASSERT_EQ(sections.size(), 3);
    const double whole = sections[0]->width();
    EXPECT_NEAR(sections[1]->width(), whole * 2 / 5 - 6, 1);
    EXPECT_NEAR(sections[2]->width(), whole * 3 / 5 - 6, 1);
    EXPECT_EQ(sections[1]->height(), 360);
}

TEST_F(HabitViewTest, SetsThePeriodThatIsPicked)
{
    const auto page = shownPage<HabitView>({});
    button(*page, "本月").click();
    EXPECT_EQ(provider.habitPeriod.get(), HabitPeriod::month);
}

} // namespace
} // namespace quillbrook
