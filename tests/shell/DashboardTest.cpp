#include "pages/kit/Chip.h"
#include "pages/views/AppTreemap.h"
#include "platform/virtual/VirtualApplication.h"
#include "report/DataProvider.h"
#include "shell/DashboardWindowController.h"
#include "shell/SidebarRow.h"
#include "support/Elements.h"
#include "support/EngineFixture.h"
#include "support/TemporaryDirectory.h"

#include <QIcon>
#include <QMenu>
#include <QPixmap>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// The dashboard on a store with ten minutes in one application.
class DashboardTest : public EngineFixture {
protected:
    DashboardTest()
    {
        startWorkingIn("Editor", "com.apple.dt.Xcode");
        machine.runFor(600);
        stop();
    }

    void show(std::optional<NavTab> tab = std::nullopt)
    {
        dashboard->show(tab);
        settle();
    }

    void settle()
    {
        machine.runFor(0);
        QApplication::processEvents();
    }

    void restart()
    {
        dashboard.reset();
        dashboard = makeDashboard();
    }

    std::unique_ptr<DashboardWindowController> makeDashboard()
    {
        return std::make_unique<DashboardWindowController>(machine.platform(), application,
            [this](std::string_view page) { heartbeats.emplace_back(page); });
    }

    QWidget& window() { return *dashboard->shownWindow(); }
    DataProvider& provider() { return *dashboard->provider(); }
    std::vector<std::string> texts()
    {
        return namesOf(elementsOf(window(), QAccessible::StaticText));
    }

    SidebarRow& row(const QString& title)
    {
        const auto rows = window().findChildren<SidebarRow*>();
        return **std::find_if(
            rows.begin(), rows.end(), [&](const SidebarRow* row) { return row->text() == title; });
    }

    void clickRow(const QString& title)
    {
        row(title).click();
        settle();
    }

    VirtualApplication application{};
    std::vector<std::string> heartbeats{};
    std::unique_ptr<DashboardWindowController> dashboard = makeDashboard();
};

TEST_F(DashboardTest, OpensOnTodayWithItsData)
{
    show();
    EXPECT_THAT(texts(), Contains("Today Is a Present"));
    EXPECT_THAT(elementsOf(window(), QAccessible::Indicator), Not(IsEmpty()));
    EXPECT_THAT(heartbeats, IsEmpty());
}

TEST_F(DashboardTest, OpensOnThePageThatWasAskedFor)
{
    show(NavTab::history);
    EXPECT_THAT(texts(), Contains("The Past Is History"));
    EXPECT_THAT(namesOf(elementsOf(window(), QAccessible::Cell)), ElementsAre("Editor"));
}

TEST_F(DashboardTest, ComesBackOnTheSamePageAndPeriod)
{
    show(NavTab::history);
    provider().historyPeriod.set(HistoryPeriod::week);
    settle();
    window().close();
    show();
    EXPECT_EQ(provider().selectedTab.get(), NavTab::history);
    EXPECT_THAT(elementsOf(window(), QAccessible::PageTabList),
        ElementsAre(Element{QAccessible::PageTabList, "时段", "本周"}));
    EXPECT_THAT(namesOf(elementsOf(window(), QAccessible::Cell)), ElementsAre("Editor"));
}

TEST_F(DashboardTest, OpensOnThePageThatWasAskedForAfterItsClosing)
{
    show();
    window().close();
    settle();
    int publications = 0;
    const auto counting = provider().data.observe([&](const auto&) { ++publications; });
    dashboard->show(NavTab::history);
    EXPECT_THAT(texts(), Contains("The Past Is History"));
    EXPECT_EQ(publications, 0); // first with the data of before
    settle();
    EXPECT_EQ(publications, 1);
    EXPECT_THAT(heartbeats, ElementsAre("Past"));
}

TEST_F(DashboardTest, ComesToTheFrontOnTheSamePage)
{
    show(NavTab::history);
    window().setWindowState(Qt::WindowMinimized);
    const int activations = application.activationCount();
    show();
    EXPECT_FALSE(window().isMinimized());
    EXPECT_EQ(application.activationCount(), activations + 1);
    EXPECT_EQ(application.keyWindow(), window().winId());
    EXPECT_THAT(texts(), Contains("The Past Is History"));
}

TEST_F(DashboardTest, SetsTheIconOnceButThePolicyAtEachShow)
{
    const TemporaryDirectory icons;
    QPixmap drawing(16, 16);
    drawing.fill(Qt::red);
    drawing.save(QString::fromStdString(icons.path() / "cn.tarnlow.quillbrook.png"));
    QIcon::setThemeName("hicolor");
    QIcon::setFallbackSearchPaths({QString::fromStdString(icons.path())});
    QApplication::setWindowIcon({});
    show();
    EXPECT_FALSE(QApplication::windowIcon().isNull());
    QApplication::setWindowIcon({});
    window().close();
    settle();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::accessory);
    show();
    EXPECT_TRUE(QApplication::windowIcon().isNull());
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    QIcon::setFallbackSearchPaths({});
}

TEST_F(DashboardTest, ForgetsWhatAPageAloneKnewWhenAnotherIsSelected)
{
    show();
    const auto isPicked = [this] { return window().findChild<Chip*>()->isChecked(); };
    window().findChild<Chip*>()->click();
    EXPECT_TRUE(isPicked());
    window().close();
    show();
    EXPECT_TRUE(isPicked()); // closing is no leaving
    clickRow("Past");
    clickRow("Today");
    EXPECT_FALSE(isPicked());
}

TEST_F(DashboardTest, WritesTheHeartbeatThenRefreshesForAnotherPage)
{
    show();
    std::vector<std::string> order;
    const auto loads = provider().isLoading.observe([&](bool isLoading) {
        order.push_back(
            (isLoading ? "loading after " : "loaded after ") + std::to_string(heartbeats.size()));
    });
    clickRow("Past");
    EXPECT_THAT(heartbeats, ElementsAre("Past"));
    EXPECT_THAT(order, ElementsAre("loading after 1", "loaded after 1"));
}

TEST_F(DashboardTest, DoesNothingForTheSelectedRow)
{
    show();
    int publications = 0;
    const auto counting = provider().data.observe([&](const auto&) { ++publications; });
    clickRow("Today");
    show(NavTab::today);
    EXPECT_EQ(publications, 0);
    EXPECT_THAT(heartbeats, IsEmpty());
    for (const SidebarRow* row : window().findChildren<SidebarRow*>()) {
        EXPECT_EQ(row->isChecked(), row->text() == "Today");
    }
}

TEST_F(DashboardTest, WalksOnWithTheKeysFromTheRowThatWasClicked)
{
    show();
    clickRow("Focus");
    ASSERT_EQ(window().focusWidget(), &row("Focus"));
    press(row("Focus"), Qt::Key_Down);
    EXPECT_EQ(provider().selectedTab.get(), NavTab::keylog);
    EXPECT_EQ(window().focusWidget(), &row("Tokens"));
}

TEST_F(DashboardTest, RefreshesWhenAPeriodChanges)
{
    show();
    int publications = 0;
    const auto counting = provider().data.observe([&](const auto&) { ++publications; });
    provider().todayPeriod.set(TodayPeriod::yesterday);
    settle();
    EXPECT_EQ(publications, 1);
    EXPECT_THAT(texts(), Contains("暂无数据"));
    provider().todayPeriod.set(TodayPeriod::yesterday);
    settle();
    EXPECT_EQ(publications, 1);
}

TEST_F(DashboardTest, ShowsTheTitleOfAPageThatIsStillToCome)
{
    show(NavTab::life);
    EXPECT_THAT(elementsOf(window(), QAccessible::StaticText),
        Contains(Element{QAccessible::StaticText, "Future", ""}));
}

TEST_F(DashboardTest, ShowsThatItLoadsUntilTheFirstData)
{
    dashboard->show();
    EXPECT_THAT(texts(), Contains("加载中..."));
    settle();
    EXPECT_THAT(texts(), Not(Contains("加载中...")));
}

TEST_F(DashboardTest, TellsWhereToLookWhenThereIsNoData)
{
    show();
    provider().data.set(std::nullopt);
    EXPECT_THAT(texts(), Contains("请确保监控服务正在运行"));
}

TEST_F(DashboardTest, ShowsTheProgramWhileItIsOpen)
{
    show();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(application.activationCount(), 1);
    window().close();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    settle();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::accessory);
    EXPECT_EQ(machine.idleMemory.givenBackCount(), 1);
    show();
    EXPECT_EQ(application.activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(machine.idleMemory.givenBackCount(), 1);
}

TEST_F(DashboardTest, KeepsItsFrameFromRunToRun)
{
    show();
    EXPECT_EQ(window().size(), QSize(960, 680));
    window().setGeometry(30, 40, 830, 570);
    window().close();
    restart();
    show();
    EXPECT_EQ(window().geometry(), QRect(30, 40, 830, 570));
}

TEST_F(DashboardTest, LeavesAFrameThatLiesOnNoScreen)
{
    machine.userDefaults.setString("DashboardWindow-v2", "90000 40 960 680");
    show();
    EXPECT_LT(window().x(), 10000);
    EXPECT_EQ(window().minimumSize(), QSize(820, 560));
}

TEST_F(DashboardTest, MovesAnApplicationToAnotherCategory)
{
    show(NavTab::history);
    EXPECT_EQ(provider().data.get()->appUsage.at(0).categoryLabel, "开发工具");
    auto& treemap = *window().findChild<AppTreemap*>();
    press(treemap, Qt::Key_Right);
    const auto menu = treemap.contextMenu();
    const auto categories = menu->findChild<QMenu*>()->actions();
    (*std::find_if(categories.begin(), categories.end(), [](const QAction* action) {
        return action->text() == "游戏";
    }))->trigger();
    settle();
    EXPECT_EQ(provider().data.get()->appUsage.at(0).categoryLabel, "游戏");
    categories.last()->trigger();
    settle();
    EXPECT_EQ(provider().data.get()->appUsage.at(0).categoryLabel, "开发工具");
}

TEST_F(DashboardTest, IsReadFromTheSidebarOn)
{
    show();
    const auto rows = namesOf(elementsOf(window(), QAccessible::ListItem));
    EXPECT_THAT(rows, ElementsAre("Today", "Past", "Future", "Habit", "Focus", "Tokens", "Alerts"));
    EXPECT_EQ(texts().at(0), "知行");
    EXPECT_THAT(texts(), Contains("墨川·Quillbrook"));
    EXPECT_THAT(texts(), Contains("行深般若波罗蜜多时"));
}

} // namespace
} // namespace quillbrook
