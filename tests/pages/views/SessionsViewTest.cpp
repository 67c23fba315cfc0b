#include "pages/views/SessionsView.h"
#include "pages/kit/MenuPicker.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <QMenu>
#include <QTableView>

#include <memory>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class SessionsViewTest : public PagesFixture {
protected:
    static SessionDetail ended(
        std::string appName, Date startedAt, std::string closeType = "switch")
    {
        return {.appName = std::move(appName),
            .startedAt = startedAt,
            .endedAt = startedAt + 59,
            .durationSec = 59,
            .closeType = std::move(closeType),
            .status = "closed"};
    }

    static SessionDetail running(std::string appName, Date startedAt)
    {
        return {.appName = std::move(appName),
            .startedAt = startedAt,
            .closeType = "—",
            .status = "active"};
    }

    static DashboardData threeSessions()
    {
        return {.recentSessions = {ended("Web", kNow - 60), ended("Editor", kNow - 600, "startup"),
                    running("Mail", kNow - 6000)}};
    }

    /// The names of the applications, row by row.
    static std::vector<std::string> apps(const QWidget& page)
    {
        const QAbstractItemModel& rows = *page.findChild<QTableView*>()->model();
        std::vector<std::string> names;
        for (int row = 0; row < rows.rowCount(); ++row) {
            names.push_back(rows.index(row, 1).data().toString().toStdString());
        }
        return names;
    }

    static std::vector<std::string> texts(QWidget& page)
    {
        return namesOf(elementsOf(page, QAccessible::StaticText));
    }

    static MenuPicker& picker(const QWidget& page, const QString& name)
    {
        return static_cast<MenuPicker&>(button(page, name));
    }

    static void pick(MenuPicker& picker, int place)
    {
        const std::unique_ptr<QMenu> menu(picker.makeMenu());
        menu->actions()[place]->trigger();
    }

    static std::vector<std::string> choices(MenuPicker& picker)
    {
        const std::unique_ptr<QMenu> menu(picker.makeMenu());
        std::vector<std::string> labels;
        for (const QAction* action : menu->actions()) {
            labels.push_back(action->text().toStdString());
        }
        return labels;
    }
};

TEST_F(SessionsViewTest, ExplainsItselfAboveTheTable)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    EXPECT_THAT(texts(*page),
        ElementsAre("Session 明细", "调试用 Session 列表", "3 个会话", "Session 数据采集逻辑",
            "• close_type 0=switch(切换应用) 1=idle_recover(空闲恢复) 2=sleep_recover(睡眠恢复) "
            "3=lock_recover(锁屏恢复) 5=startup(引擎启动)",
            "• 进入 active 时立即 INSERT 写入数据库(ended_at=NULL)，切换/关闭时 UPDATE 补全 — 即使 "
            "crash 数据不丢",
            "• 去抖机制：新 app 需持续聚焦 2s 才确认切换，避免快速划过",
            "• 判定条件：状态机静默 >300s 且 HID设备(键盘/鼠标/触控板)无活动 >300s 则进入 idle",
            "• 恢复条件：状态机静默 >120s 或 HID设备活动 <10s 则恢复 active", "时间", "3", "应用",
            "关闭", "状态"));
}

TEST_F(SessionsViewTest, IsATableWithItsColumns)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::ColumnHeader)),
        ElementsAre("日期", "应用", "开始", "结束", "时长", "关闭", "状态"));
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::Cell)),
        ElementsAre("今天", "Mail", "06:20:00", "--:--:--", "0秒", "—", "active", "今天", "Web",
            "07:59:00", "07:59:59", "59秒", "switch", "closed", "今天", "Editor", "07:50:00",
            "07:50:59", "59秒", "startup", "closed"));
}

TEST_F(SessionsViewTest, FollowsTheComputersZoneInItsDates)
{
    machine.timeZone.setSecondsFromUtc(-28800);
    const auto page = shownPage<SessionsView>({.recentSessions = {ended("Web", kNow - 10 * 3600)}});
    // 06:00 of the same day where the computer is, 22:00 of the day before in UTC+8.
    const auto cells = namesOf(elementsOf(*page, QAccessible::Cell));
    EXPECT_EQ(cells[0], "今天");
    EXPECT_EQ(cells[2], "22:00:00");
}

TEST_F(SessionsViewTest, ShowsAPictureWithoutSessions)
{
    const auto page = shownPage<SessionsView>({});
    EXPECT_THAT(texts(*page), Contains("没有符合条件的 Session"));
    EXPECT_THAT(texts(*page), Contains("0 个会话"));
    EXPECT_THAT(elementsOf(*page, QAccessible::Table), IsEmpty());
    page->show(threeSessions());
    EXPECT_THAT(texts(*page), Not(Contains("没有符合条件的 Session")));
}

TEST_F(SessionsViewTest, CountsWhatPassesBesideAll)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    pick(picker(*page, "关闭"), 1); // switch
    EXPECT_THAT(apps(*page), ElementsAre("Web"));
    EXPECT_THAT(texts(*page), Contains("3 个会话"));
    EXPECT_THAT(texts(*page), Contains("1"));
    EXPECT_THAT(texts(*page), Not(Contains("3")));
}

TEST_F(SessionsViewTest, FiltersByStatus)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    EXPECT_THAT(choices(picker(*page, "状态")),
        ElementsAre("全部", "活跃(active)", "已关闭(closed)", "恢复(recover)"));
    pick(picker(*page, "状态"), 1);
    EXPECT_THAT(apps(*page), ElementsAre("Mail"));
    pick(picker(*page, "状态"), 3);
    EXPECT_THAT(texts(*page), Contains("没有符合条件的 Session"));
    pick(picker(*page, "状态"), 0);
    EXPECT_THAT(apps(*page), ElementsAre("Mail", "Web", "Editor"));
}

TEST_F(SessionsViewTest, OffersItsApplications)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    EXPECT_THAT(choices(picker(*page, "应用")), ElementsAre("全部", "Editor", "Mail", "Web"));
    pick(picker(*page, "应用"), 3);
    EXPECT_THAT(apps(*page), ElementsAre("Web"));
}

TEST_F(SessionsViewTest, TellsNoCapitalsFromSmallLetters)
{
    DashboardData data = threeSessions();
    data.recentSessions.push_back(ended("WEBMAIL", kNow - 6000));
    const auto page = shownPage<SessionsView>(data);
    pick(picker(*page, "应用"), 4);
    EXPECT_THAT(apps(*page), ElementsAre("Web", "WEBMAIL"));
}

TEST_F(SessionsViewTest, KeepsItsFiltersWithNewData)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    pick(picker(*page, "应用"), 3); // Web
    pick(picker(*page, "关闭"), 1);
    DashboardData more = threeSessions();
    more.recentSessions.push_back(ended("Another", kNow - 60));
    more.recentSessions.push_back(ended("Web", kNow - 9000));
    page->show(more);
    EXPECT_THAT(apps(*page), ElementsAre("Web", "Web"));
    EXPECT_EQ(picker(*page, "应用").accessibleValue(), "Web");
    EXPECT_EQ(picker(*page, "关闭").accessibleValue(), "switch");
}

TEST_F(SessionsViewTest, StaysEmptyForAnApplicationThatIsGoneUntilThePickerIsSetBack)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    pick(picker(*page, "应用"), 3);
    page->show(DashboardData{.recentSessions = {ended("Editor", kNow - 60)}});
    EXPECT_THAT(apps(*page), IsEmpty());
    EXPECT_THAT(texts(*page), Contains("没有符合条件的 Session"));
    EXPECT_EQ(picker(*page, "应用").accessibleValue(), "Web");
    pick(picker(*page, "应用"), 0);
    EXPECT_THAT(apps(*page), ElementsAre("Editor"));
}

TEST_F(SessionsViewTest, FindsItsApplicationAgain)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    pick(picker(*page, "应用"), 3);
    page->show(DashboardData{});
    page->show(threeSessions());
    EXPECT_THAT(apps(*page), ElementsAre("Web"));
    EXPECT_EQ(picker(*page, "应用").current(), 3);
}

TEST_F(SessionsViewTest, BindsItsPickerAndRefreshes)
{
    const auto page = shownPage<SessionsView>({});
    button(*page, "昨日").click();
    EXPECT_EQ(provider.sessionsPeriod.get(), SessionsPeriod::yesterday);
    machine.runFor(0);
    int published = 0;
    const Subscription subscription = provider.data.observe([&](const auto&) { ++published; });
    button(*page, "刷新").click();
    machine.runFor(0);
    EXPECT_EQ(published, 1);
}

TEST_F(SessionsViewTest, FitsTheSmallestWindow)
{
    const auto page = shownPage<SessionsView>(threeSessions());
    EXPECT_LE(page->widget()->minimumSizeHint().width(), 820 - 220 - 10);
}

} // namespace
} // namespace quillbrook
