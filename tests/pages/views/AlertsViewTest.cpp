#include "pages/views/AlertsView.h"
#include "pages/kit/FoldHeader.h"
#include "pages/kit/MarkView.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <set>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr double kDay = 86400;

class AlertsViewTest : public PagesFixture {
protected:
    static AlertRecord alertAt(
        Date timestamp, std::string type = "high_load", std::string severity = "warning")
    {
        return {.timestamp = timestamp,
            .alertType = std::move(type),
            .severity = std::move(severity),
            .message = "load_5m 21"};
    }

    /// The present day and the two before.
    static DashboardData threeDays()
    {
        return {.alerts = {alertAt(kNow), alertAt(kNow - kDay), alertAt(kNow - kDay - 60),
                    alertAt(kNow - 2 * kDay, "high_swap", "critical")}};
    }

    static std::vector<Element> headers(QWidget& page)
    {
        std::vector<Element> found = elementsOf(page, QAccessible::Button);
        std::erase_if(found,
            [](const Element& element) { return element.value.find("告警") == std::string::npos; });
        return found;
    }

    static std::vector<std::string> openDates(const QWidget& page)
    {
        std::vector<std::string> dates;
        for (const auto* header : page.findChildren<FoldHeader*>()) {
            if (header->isChecked()) {
                dates.push_back(header->text().toStdString());
            }
        }
        return dates;
    }

    static std::vector<std::string> dots(QWidget& page)
    {
        QCoreApplication::processEvents();
        return namesOf(elementsOf(page, QAccessible::Indicator));
    }
};

TEST_F(AlertsViewTest, ShowsACardWithoutAlerts)
{
    const auto page = shownPage<AlertsView>({});
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        ElementsAre("告警时间线", "暂无告警记录", "系统运行正常"));
    EXPECT_THAT(headers(*page), IsEmpty());
    page->show(threeDays());
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)),
        testing::Not(Contains("暂无告警记录")));
}

TEST_F(AlertsViewTest, OpensTodayAndFoldsTheOthers)
{
    const auto page = shownPage<AlertsView>(threeDays());
    EXPECT_THAT(headers(*page),
        ElementsAre(Element{QAccessible::Button, "12-31", "2 次告警"},
            Element{QAccessible::Button, "12-30", "1 次告警"},
            Element{QAccessible::Button, "01-01", "1 次告警"}));
    EXPECT_THAT(openDates(*page), ElementsAre("01-01"));
    EXPECT_THAT(dots(*page), ElementsAre("高负载 08:00"));
}

TEST_F(AlertsViewTest, FoldsYesterdayOnArrival)
{
    const auto page = shownPage<AlertsView>({.alerts = {alertAt(kNow - kDay)}});
    EXPECT_EQ(headers(*page).size(), 1u);
    EXPECT_THAT(openDates(*page), IsEmpty());
    EXPECT_THAT(dots(*page), IsEmpty());
}

TEST_F(AlertsViewTest, MakesRowsWhenADayIsOpened)
{
    const auto page = shownPage<AlertsView>(threeDays());
    EXPECT_EQ(page->findChildren<MarkView*>().size(), 1);
    press(button(*page, "12-31"), Qt::Key_Space);
    EXPECT_EQ(page->findChildren<MarkView*>().size(), 2);
    EXPECT_THAT(dots(*page), ElementsAre("高负载 07:59", "高负载 08:00", "高负载 08:00"));
    press(button(*page, "12-31"), Qt::Key_Space);
    EXPECT_EQ(page->findChildren<MarkView*>().size(), 1);
}

TEST_F(AlertsViewTest, ReadsAnOpenedDayBehindItsHeader)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "12-31").click();
    QCoreApplication::processEvents();
    std::vector<Element> all;
    collectElements(*QAccessible::queryAccessibleInterface(page.get()), all);
    std::vector<std::string> names = namesOf(all);
    std::erase_if(names, [](const std::string& name) {
        static const std::set<std::string> kKept{"12-31", "12-30", "01-01", "高负载 07:59"};
        return !kKept.contains(name);
    });
    // The picture bears the name of its day.
    EXPECT_THAT(names, ElementsAre("12-31", "12-31", "高负载 07:59", "12-30", "01-01", "01-01"));
}

TEST_F(AlertsViewTest, StepsFromAHeaderIntoItsDay)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "12-31").click();
    EXPECT_NE(qobject_cast<MarkView*>(button(*page, "12-31").nextInFocusChain()), nullptr);
}

TEST_F(AlertsViewTest, KeepsTheFoldingWhileTheDaysStay)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "12-31").click();
    button(*page, "01-01").click();
    DashboardData more = threeDays();
    more.alerts.push_back(alertAt(kNow - kDay - 120));
    page->show(more);
    EXPECT_THAT(openDates(*page), ElementsAre("12-31"));
    EXPECT_THAT(dots(*page), ElementsAre("高负载 07:58", "高负载 07:59", "高负载 08:00"));
    EXPECT_EQ(headers(*page)[0].value, "3 次告警");
}

TEST_F(AlertsViewTest, FoldsAgainWhenTheDaysChange)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "12-31").click();
    button(*page, "01-01").click();
    DashboardData more = threeDays();
    more.alerts.push_back(alertAt(kNow - 3 * kDay));
    page->show(more);
    EXPECT_THAT(openDates(*page), ElementsAre("01-01"));
}

TEST_F(AlertsViewTest, FoldsTheDaysThatComeBack)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "12-31").click();
    page->show(DashboardData{});
    page->show(threeDays());
    EXPECT_THAT(openDates(*page), ElementsAre("01-01"));
}

TEST_F(AlertsViewTest, KeepsTheFocusWhenTheDaysChange)
{
    const auto page = shownPage<AlertsView>(threeDays());
    page->activateWindow();
    button(*page, "12-30").setFocus();
    DashboardData more = threeDays();
    more.alerts.push_back(alertAt(kNow - 3 * kDay));
    page->show(more);
    ASSERT_NE(page->focusWidget(), nullptr);
    EXPECT_EQ(page->focusWidget()->accessibleName(), "12-30");
}

TEST_F(AlertsViewTest, ShowsUnknownKindsByTheirName)
{
    const auto page = shownPage<AlertsView>({.alerts = {alertAt(kNow, "disk_full", "odd")}});
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::StaticText)), Contains("disk_full"));
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator),
        ElementsAre(Element{QAccessible::Indicator, "disk_full 08:00", "0.3333333333333333"}));
}

TEST_F(AlertsViewTest, OpensEveryDayOfTheYearAsOneHeader)
{
    DashboardData data;
    for (int day = 0; day < 3650; ++day) {
        data.alerts.push_back(alertAt(kNow - day * kDay));
        data.alerts.push_back(alertAt(kNow - day * kDay - 7200, "high_memory"));
    }
    const auto page = shownPage<AlertsView>(data);
    EXPECT_EQ(headers(*page).size(), 366u);
    EXPECT_EQ(page->findChildren<MarkView*>().size(), 1);
    EXPECT_EQ(dots(*page).size(), 20u);
}

TEST_F(AlertsViewTest, ExplainsTheRulesAndGivesTheFocusBack)
{
    const auto page = shownPage<AlertsView>(threeDays());
    page->activateWindow();
    QAbstractButton& info = button(*page, "告警触发条件");
    info.setFocus();
    press(info, Qt::Key_Space);
    QCoreApplication::processEvents();
    QWidget* rules = QApplication::activePopupWidget();
    ASSERT_NE(rules, nullptr);
    EXPECT_THAT(namesOf(elementsOf(*rules, QAccessible::StaticText)),
        ElementsAre("告警触发条件", "高负载 (warning)", "load_5m > 20 持续 10 次采样",
            "极高负载 (critical)", "load_5m > 50 持续 5 次采样", "内存不足 (warning)",
            "memory > 85% 持续 5 次采样", "Swap 严重不足 (critical)", "swap > 80%",
            "图形系统异常 (warning)", "WindowServer CPU > 30% 持续 5 次采样",
            "图形系统崩溃 (critical)", "WindowServer Watchdog 超时，图形系统重启", "冷却时间",
            "高负载/内存 warning 30 分钟 · 图形/负载 critical 15 分钟", "采样频率",
            "系统快照每 60 秒采集一次"));
    press(*rules, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(page->focusWidget(), &info);
}

TEST_F(AlertsViewTest, BindsItsPickerToThePeriod)
{
    const auto page = shownPage<AlertsView>(threeDays());
    button(*page, "全部").click();
    EXPECT_EQ(provider.alertsPeriod.get(), AlertsPeriod::all);
}

TEST_F(AlertsViewTest, FitsTheSmallestWindow)
{
    const auto page = shownPage<AlertsView>(threeDays());
    EXPECT_LE(page->widget()->minimumSizeHint().width(), 820 - 220 - 10);
}

TEST_F(AlertsViewTest, DrawsOnlyTheDaysAnewThatChanged)
{
    const auto page = shownPage<AlertsView>(threeDays());
    auto* today = page->findChild<MarkView*>();
    ASSERT_NE(today, nullptr);
    today->setPicture([](Size, const TextWidth&) { return std::vector<Mark>(); });
    page->show(threeDays());
    EXPECT_THAT(today->marks(), IsEmpty());
    DashboardData data = threeDays();
    data.alerts.insert(data.alerts.begin(), alertAt(kNow + 60));
    page->show(data);
    EXPECT_THAT(today->marks(), Not(IsEmpty()));
}

} // namespace
} // namespace quillbrook
