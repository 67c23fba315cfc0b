#include "pages/kit/Popover.h"
#include "pages/kit/SegmentedPicker.h"
#include "pages/views/PastPage.h"
#include "pages/views/TodayPage.h"
#include "pages/views/VerticalChineseText.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPointer>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;

using TodayPageTest = PagesFixture;
using PastPageTest = PagesFixture;

DashboardData todayData()
{
    return {.appUsage = {{.appName = "Editor", .totalSeconds = 60}},
        .overview = TodayOverview{.firstActivity = 1767225600,
            .totalActiveHours = 2.0833,
            .sessionCount = 3,
            .appSwitchCount = 3,
            .longestSessionMinutes = 61},
        .totalKeylogKeystrokes = 999};
}

TEST_F(TodayPageTest, LeavesTheOverviewOutWhileItIsAbsent)
{
    const auto page = shownPage<TodayPage>({});
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        ElementsAre("时间线", "暂无数据", "一切有为法，如梦幻泡影，如露亦如电"));
}

TEST_F(TodayPageTest, ShowsTitleFiguresTimelineAndMottoInThisOrder)
{
    const auto page = shownPage<TodayPage>(todayData());
    const auto texts = elementsOf(*page, QAccessible::StaticText);
    EXPECT_THAT(namesOf(texts),
        ElementsAre("Today Is a Present", "3 个会话", "单次最长 1h1m", "切换 3 次", "今日键盘输入",
            "时间线", "暂无数据", "一切有为法，如梦幻泡影，如露亦如电"));
    EXPECT_EQ(texts[1].value, "08:00");
    EXPECT_EQ(texts[2].value, "2h4m");
    EXPECT_EQ(texts[3].value, "1 个");
    EXPECT_EQ(texts[4].value, "999");
}

TEST_F(TodayPageTest, SetsThePeriodThatIsPicked)
{
    const auto page = shownPage<TodayPage>(todayData());
    button(*page, "昨日").click();
    EXPECT_EQ(provider.todayPeriod.get(), TodayPeriod::yesterday);
}

TEST_F(TodayPageTest, ReachesEveryControlByKeyboard)
{
    const auto page = shownPage<TodayPage>(todayData());
    int named = 0;
    for (const auto* button : page->findChildren<QAbstractButton*>()) {
        const bool isSegment = qobject_cast<SegmentedPicker*>(button->parentWidget()) != nullptr;
        EXPECT_TRUE(isSegment || (button->focusPolicy() & Qt::TabFocus) != 0); // arrows lead there
        named += button->accessibleName().isEmpty() ? 0 : 1;
    }
    EXPECT_EQ(named, 4); // two periods, the information, the export
}

TEST_F(TodayPageTest, ExplainsItsFiguresInAPopover)
{
    const auto page = shownPage<TodayPage>(todayData());
    button(*page, "指标说明").click();
    const QPointer<Popover> popover = qobject_cast<Popover*>(QApplication::activePopupWidget());
    ASSERT_NE(popover, nullptr);
    EXPECT_EQ(popover->body().width(), 380);
    const auto texts = namesOf(elementsOf(*popover, QAccessible::StaticText));
    ASSERT_EQ(texts.size(), 9U); // the headline, four names and four details
    EXPECT_EQ(texts[0], "指标说明");
    EXPECT_EQ(texts[7], "击键次数");
    press(*popover, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(PastPageTest, LeavesTheFiguresOutWhileTheyAreAbsent)
{
    const auto page = shownPage<PastPage>({});
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        ElementsAre("The Past Is History", "应用的活跃时长", "暂无数据",
            "是日已过，命亦随减，如少水鱼，斯有何乐"));
    page->show({.historyOverview = HistoryOverview{.bootCount = 2}});
    EXPECT_THAT(elementsOf(*page, QAccessible::StaticText),
        Contains(Element{QAccessible::StaticText, "开关机", "2 次"}));
}

TEST(VerticalChineseTextTest, IsOneTextForEachColumn)
{
    VerticalChineseText text({"观自在菩萨", "墨川"});
    text.show();
    EXPECT_THAT(
        namesOf(elementsOf(text, QAccessible::StaticText)), ElementsAre("观自在菩萨", "墨川"));
}

TEST_F(PastPageTest, FitTheSmallestWindowBesideTheSidebar)
{
    const auto today = shownPage<TodayPage>(todayData());
    const auto past = shownPage<PastPage>({.historyOverview = HistoryOverview{}});
    constexpr int kRoom = 820 - 220 - 10; // without the sidebar and the scroll bar
    EXPECT_LE(today->widget()->minimumSizeHint().width(), kRoom);
    EXPECT_LE(past->widget()->minimumSizeHint().width(), kRoom);
}

} // namespace
} // namespace quillbrook
