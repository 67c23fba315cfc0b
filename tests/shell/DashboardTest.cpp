#include "pages/kit/Chip.h"
#include "pages/kit/Line.h"
#include "pages/kit/ScrollPage.h"
#include "pages/views/AppTreemap.h"
#include "platform/virtual/VirtualApplication.h"
#include "report/DataProvider.h"
#include "shell/AboutRow.h"
#include "shell/AppIcon.h"
#include "shell/DashboardWindowController.h"
#include "shell/Sidebar.h"
#include "shell/SidebarRow.h"
#include "shell/SplitView.h"
#include "shell/WindowFrame.h"
#include "support/AccessibleEvents.h"
#include "support/BecomesTrue.h"
#include "support/Elements.h"
#include "support/EngineFixture.h"
#include "support/TemporaryDirectory.h"

#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <map>

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
        return std::make_unique<DashboardWindowController>(
            machine.platform(), application,
            [this](std::string_view page) {
                heartbeats.emplace_back(page);
                textsAtHeartbeat = texts();
            },
            [this](MenuAction action) { performed.push_back(action); });
    }

    /// What the screen has room for.
    static QRect room()
    {
        return roomForWindow(QGuiApplication::primaryScreen()->availableGeometry());
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
    std::vector<std::string> textsAtHeartbeat{};
    std::vector<MenuAction> performed{};
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
    EXPECT_THAT(textsAtHeartbeat, Contains("Today Is a Present")); // the new page isn't made yet
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

TEST_F(DashboardTest, WalksUpFromTheFootOfTheSidebar)
{
    show(NavTab::about);
    auto& about = *window().findChild<AboutRow*>();
    about.setFocus();
    press(about, Qt::Key_Up);
    EXPECT_EQ(provider().selectedTab.get(), NavTab::alerts);
    EXPECT_EQ(window().focusWidget(), &row("Alerts"));
    press(row("Alerts"), Qt::Key_Down);
    EXPECT_EQ(provider().selectedTab.get(), NavTab::about);
    press(about, Qt::Key_Down); // there is nothing behind the last
    EXPECT_EQ(window().focusWidget(), &about);
}

TEST_F(DashboardTest, HasOneStopOfTheTabKeyInTheSidebar)
{
    const auto stops = [this] {
        std::vector<std::string> names;
        for (const auto* button :
            window().findChild<Sidebar*>()->findChildren<QAbstractButton*>()) {
            if ((button->focusPolicy() & Qt::TabFocus) != 0) {
                names.push_back(button->text().toStdString());
            }
        }
        return names;
    };
    show(NavTab::habit);
    EXPECT_THAT(stops(), ElementsAre("Habit"));
    provider().selectedTab.set(NavTab::about);
    EXPECT_THAT(stops(), ElementsAre("关于"));
    provider().selectedTab.set(NavTab::session); // which has no row
    EXPECT_THAT(stops(), ElementsAre("Today"));
}

TEST_F(DashboardTest, LetsScreenReadersHearTheSelectedPage)
{
    show();
    const AccessibleEvents events;
    provider().selectedTab.set(NavTab::focus);
    EXPECT_THAT(events.of(row("Focus")), Contains(QAccessible::Selection));
    EXPECT_THAT(events.of(row("Past")), Not(Contains(QAccessible::Selection)));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&row("Focus"))->state().selected);
}

TEST_F(DashboardTest, LetsScreenReadersHearThePageThatWasClicked)
{
    show();
    const AccessibleEvents events;
    row("Past").click();
    EXPECT_THAT(events.of(row("Past")), Contains(QAccessible::Selection));
    row("Past").click();
    const auto told = events.of(row("Past"));
    EXPECT_EQ(std::ranges::count(told, QAccessible::Selection), 1);
}

TEST_F(DashboardTest, ScrollsThePageByKeysWhereverTheFocusIs)
{
    show();
    window().setMinimumSize(0, 0);
    window().resize(window().width(), 300);
    settle();
    row("Today").setFocus();
    const QScrollBar& bar = *window().findChild<ScrollPage*>()->verticalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    press(row("Today"), Qt::Key_PageDown);
    EXPECT_GT(bar.value(), 0);
    const int before = bar.value();
    row("Today").clearFocus();
    press(window(), Qt::Key_Up); // nothing has the focus
    EXPECT_LT(bar.value(), before);
}

TEST_F(DashboardTest, LeavesSidebarAndPageTheirMinimum)
{
    show();
    auto& split = *window().findChild<SplitView*>();
    const auto& sidebar = *window().findChild<Sidebar*>();
    EXPECT_EQ(sidebar.width(), Sidebar::kIdealWidth);
    split.setSizes({5000, 0}); // the divider, dragged to the right
    EXPECT_EQ(split.sizes()[1], SplitView::kPageMinimum);
    split.setSizes({0, 5000});
    EXPECT_EQ(sidebar.width(), Sidebar::kMinimumWidth);
    split.setSizes({5000, 0});
    window().resize(window().minimumWidth(), 560);
    settle();
    EXPECT_GE(split.sizes()[1], SplitView::kPageMinimum);
}

TEST_F(DashboardTest, BeginsThePageAtTheSidebarsEdge)
{
    show();
    const auto& split = *window().findChild<SplitView*>();
    const auto& sidebar = *window().findChild<Sidebar*>();
    EXPECT_EQ(split.widget(1)->x(), Sidebar::kIdealWidth);
    const QImage picture = window().grab().toImage();
    const int edge = sidebar.mapTo(&window(), QPoint(Sidebar::kIdealWidth, 0)).x();
    const int line = split.widget(1)->findChild<Line*>()->mapTo(&window(), QPoint()).y();
    EXPECT_EQ(picture.pixel(edge, line), picture.pixel(edge + 50, line));
}

TEST_F(DashboardTest, LetsTheSidebarsEdgeBeDragged)
{
    show();
    auto& split = *window().findChild<SplitView*>();
    QWidget& handle = *split.handle(1);
    EXPECT_GE(handle.width(), 3);
    const auto send = [&handle](QEvent::Type type, const QPointF& point) {
        QMouseEvent event(type, point, handle.mapToGlobal(point), Qt::LeftButton,
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(&handle, &event);
    };
    const QPointF middle(handle.rect().center());
    send(QEvent::MouseButtonPress, middle);
    send(QEvent::MouseMove, middle - QPointF(20, 0));
    send(QEvent::MouseButtonRelease, middle);
    EXPECT_NEAR(split.sizes()[0], Sidebar::kIdealWidth - 20, 3);
}

TEST_F(DashboardTest, KeepsEverythingReachableInATile)
{
    show();
    window().setMinimumSize(0, 0); // which a tiling window manager doesn't heed
    window().resize(423, 300);
    settle();
    const auto& sidebar = *window().findChild<Sidebar*>();
    const auto& page = *window().findChild<ScrollPage*>();
    EXPECT_GE(sidebar.width(), Sidebar::kMinimumWidth);
    EXPECT_LE(page.mapTo(&window(), page.rect().topRight()).x(), 423);
    EXPECT_EQ(
        page.widget()->width(), page.viewport()->width() + page.horizontalScrollBar()->maximum());
    EXPECT_GT(page.horizontalScrollBar()->maximum(), 0);
    const auto& about = *window().findChild<AboutRow*>();
    EXPECT_LE(about.mapTo(&window(), about.rect().bottomLeft()).y(), 300);
    auto& list = *sidebar.findChild<QScrollArea*>();
    EXPECT_GT(list.verticalScrollBar()->maximum(), 0);
    row("Tokens").setFocus();
    press(row("Tokens"), Qt::Key_Down);
    EXPECT_FALSE(row("Alerts").visibleRegion().isEmpty());
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

TEST_F(DashboardTest, HasAMenuWithShortcutsThatItsWindowTakes)
{
    show();
    std::map<std::string, std::string> shortcuts;
    for (const QAction* entry : window().actions()) {
        shortcuts[entry->text().toStdString()] = entry->shortcut().toString().toStdString();
    }
    EXPECT_THAT(shortcuts,
        ElementsAre(std::pair("关于 Quillbrook", ""), std::pair("关闭窗口", "Ctrl+W"),
            std::pair("刷新数据", "Ctrl+R"), std::pair("退出", "Ctrl+Q")));
    EXPECT_TRUE(window().findChild<QMenuBar*>()->isVisible());
}

TEST_F(DashboardTest, DoesWhatItsMenuPromises)
{
    show();
    const auto choose = [this](const QString& title) {
        for (QAction* entry : window().actions()) {
            if (entry->text() == title) {
                entry->trigger();
            }
        }
        settle();
    };
    int publications = 0;
    const auto counting = provider().data.observe([&](const auto&) { ++publications; });
    choose("刷新数据");
    EXPECT_EQ(publications, 1);
    EXPECT_THAT(performed, ElementsAre(MenuAction::refresh));
    choose("关于 Quillbrook");
    choose("退出");
    EXPECT_THAT(
        performed, ElementsAre(MenuAction::refresh, MenuAction::showAbout, MenuAction::quit));
    choose("关闭窗口");
    EXPECT_FALSE(window().isVisible());
}

TEST_F(DashboardTest, ShowsOurOwnIconWhereTheDesktopHasNone)
{
    QIcon::setThemeName("hicolor");
    QApplication::setWindowIcon({});
    show();
    EXPECT_THAT(QApplication::windowIcon().availableSizes(),
        testing::IsSupersetOf({QSize(16, 16), QSize(48, 48), QSize(256, 256)}));
    EXPECT_EQ(appPicture().size(), QSize(64, 64));
    EXPECT_EQ(appPicture().pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(appPicture().pixelColor(32, 8).alpha(), 255);
}

TEST_F(DashboardTest, KeepsItsFrameFromRunToRun)
{
    show();
    EXPECT_EQ(window().size(), room().size().boundedTo({960, 680}));
    const QRect frame(room().topLeft() + QPoint(0, 4), window().minimumSize() + QSize(0, 10));
    window().setGeometry(frame);
    window().close();
    restart();
    show();
    EXPECT_EQ(window().geometry(), frame);
}

TEST_F(DashboardTest, SavesItsFrameWhenItHasComeToRest)
{
    show();
    window().resize(window().minimumSize() + QSize(0, 20));
    const auto saved = [this] { return machine.userDefaults.stringForKey("DashboardWindow-v2"); };
    const std::string before = saved();
    EXPECT_TRUE(becomesTrue([&] { return saved() != before; }));
    EXPECT_THAT(saved(), testing::EndsWith(" " + std::to_string(window().height())));
}

TEST_F(DashboardTest, LeavesAFrameThatLiesOnNoScreen)
{
    machine.userDefaults.setString("DashboardWindow-v2", "90000 40 960 680");
    show();
    EXPECT_LT(window().x(), 10000);
    EXPECT_EQ(window().minimumSize(), room().size().boundedTo({820, 560}));
    EXPECT_TRUE(room().contains(window().geometry()));
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
