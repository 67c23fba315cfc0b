#include "pages/views/AppTreemap.h"
#include "categories/SeedTables.h"
#include "pages/kit/Chip.h"
#include "pages/kit/HoverTip.h"
#include "pages/kit/Legend.h"
#include "pages/kit/Look.h"
#include "pages/views/AppTreemapSection.h"
#include "support/Elements.h"
#include "support/Painting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>

#include <optional>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

std::vector<AppUsage> twoApps()
{
    return {{.appName = "Editor",
                .bundleId = "org.editor",
                .totalSeconds = 7500,
                .categoryLabel = "开发工具"},
        {.appName = "Web", .bundleId = "org.web", .totalSeconds = 2500, .categoryLabel = "浏览器"}};
}

void hover(AppTreemap& treemap, double x, double y)
{
    QMouseEvent event(QEvent::MouseMove, QPointF(x, y), treemap.mapToGlobal(QPointF(x, y)),
        Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&treemap, &event);
}

class AppTreemapTest : public testing::Test {
protected:
    AppTreemapTest()
    {
        treemap.setApps(twoApps());
        treemap.resize(400, 200);
        treemap.show();
    }

    std::vector<std::pair<std::string, std::optional<std::int64_t>>> changes{};
    AppTreemap treemap{[this](const std::string& bundleId, std::optional<std::int64_t> id) {
        changes.emplace_back(bundleId, id);
    }};
};

TEST_F(AppTreemapTest, OffersItsCells)
{
    EXPECT_THAT(elementsOf(treemap, QAccessible::Cell),
        ElementsAre(Element{QAccessible::Cell, "Editor", "2h5m"},
            Element{QAccessible::Cell, "Web", "41m"}));
    const auto* interface = QAccessible::queryAccessibleInterface(&treemap);
    const QPoint origin = treemap.mapToGlobal(QPoint(0, 0));
    EXPECT_EQ(interface->child(1)->rect().translated(-origin), QRect(300, 0, 100, 200));
}

TEST_F(AppTreemapTest, HasNoMenuWhereNothingIsHovered)
{
    EXPECT_EQ(treemap.contextMenu(), nullptr);
    hover(treemap, 10, 10);
    EXPECT_NE(treemap.contextMenu(), nullptr);
    hover(treemap, 500, 10);
    EXPECT_EQ(treemap.contextMenu(), nullptr);
}

TEST_F(AppTreemapTest, ShowsItsTipOverTheHoveredCell)
{
    auto* tip = treemap.findChild<HoverTip*>();
    EXPECT_FALSE(tip->isVisible());
    hover(treemap, 10, 10);
    EXPECT_TRUE(tip->isVisible());
    EXPECT_NEAR(tip->geometry().center().x(), 150, 1);
    EXPECT_NEAR(tip->geometry().center().y(), 18, 1);
    hover(treemap, -1, 10);
    EXPECT_FALSE(tip->isVisible());
}

TEST_F(AppTreemapTest, TellsTheCategoryInItsTip)
{
    hover(treemap, 10, 10);
    const Painting painting = paintingOf(*treemap.findChild<HoverTip*>());
    EXPECT_EQ(painting.allText(), "Editor·开发工具");
    EXPECT_THAT(painting.circles(), testing::Contains(Look::toQColor(categoryColor("开发工具"))));
    EXPECT_NE(categoryColor("开发工具"), categoryColor("浏览器"));
}

TEST_F(AppTreemapTest, MovesAnApplicationToAnotherCategory)
{
    hover(treemap, 350, 10);
    const auto menu = treemap.contextMenu();
    const auto entries = menu->actions();
    EXPECT_EQ(entries[0]->text(), "Web");
    EXPECT_EQ(entries[1]->text(), "分类: 浏览器");
    EXPECT_EQ(entries[2]->text(), "活跃时长: 41m");
    const auto categories = menu->findChild<QMenu*>()->actions();
    ASSERT_EQ(categories.size(), 14); // twelve, a divider, and the way back
    EXPECT_TRUE(categories[0]->icon().isNull());
    EXPECT_FALSE(categories[1]->icon().isNull()); // the present one

    testing::internal::CaptureStdout();
    categories[0]->trigger();
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(), "[AppTreemap] 切换分类: Web -> 开发工具 (id=1)\n");
    categories[13]->trigger();
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0], (std::pair{std::string("org.web"), std::optional<std::int64_t>(1)}));
    EXPECT_EQ(changes[1].second, std::nullopt);
}

TEST_F(AppTreemapTest, OpensItsMenuForTheCellUnderTheMouse)
{
    const QPoint place(350, 10); // no motion came before
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, treemap.mapToGlobal(place));
    QApplication::sendEvent(&treemap, &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions()[0]->text(), "Web");
    menu->close();
}

TEST_F(AppTreemapTest, OpensItsMenuByKeyForTheCellThatTheArrowsReached)
{
    const auto open = [this] {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
        QApplication::sendEvent(&treemap, &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    EXPECT_EQ(open(), nullptr);
    press(treemap, Qt::Key_Left);
    QMenu* menu = open();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions()[0]->text(), "Web");
    menu->close();
}

TEST_F(AppTreemapTest, OffersTheCategoriesInTheirOrder)
{
    hover(treemap, 10, 10);
    const auto menu = treemap.contextMenu();
    EXPECT_TRUE(menu->actions()[3]->isSeparator());
    EXPECT_EQ(menu->actions()[4]->text(), "切换分类");
    std::vector<std::string> labels;
    for (const QAction* action : menu->findChild<QMenu*>()->actions()) {
        labels.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    }
    EXPECT_THAT(labels,
        ElementsAre("开发工具", "浏览器", "通讯社交", "数据分析", "写作笔记", "办公套件",
            "系统工具", "娱乐", "游戏", "摄影剪辑", "旅游", "理财", "-", "恢复系统默认"));
}

TEST_F(AppTreemapTest, KeepsAnAmpersandInTheMenu)
{
    auto apps = twoApps();
    apps[0].appName = "R&D";
    treemap.setApps(apps);
    hover(treemap, 10, 10);
    EXPECT_EQ(treemap.contextMenu()->actions()[0]->text(), "R&&D"); // shown as one
}

TEST_F(AppTreemapTest, ElidesALongNameInTheMenu)
{
    auto apps = twoApps();
    apps[0].appName = std::string(200, 'x');
    treemap.setApps(apps);
    hover(treemap, 10, 10);
    EXPECT_LT(treemap.contextMenu()->sizeHint().width(), 400);
}

TEST_F(AppTreemapTest, IsWalkedByTheArrowKeys)
{
    const auto hovered = [this] { return treemap.contextMenu()->actions()[0]->text(); };
    press(treemap, Qt::Key_Right);
    EXPECT_EQ(hovered(), "Editor");
    press(treemap, Qt::Key_Right);
    EXPECT_EQ(hovered(), "Web");
    press(treemap, Qt::Key_Right);
    EXPECT_EQ(hovered(), "Editor");
    press(treemap, Qt::Key_Left);
    EXPECT_EQ(hovered(), "Web");
}

TEST(AppTreemapWithoutChange, LeavesTheSubmenuOut)
{
    AppTreemap treemap{{}};
    treemap.setApps(twoApps());
    treemap.resize(400, 200);
    hover(treemap, 10, 10);
    EXPECT_EQ(treemap.contextMenu()->findChild<QMenu*>(), nullptr);
}

TEST(AppTreemapSectionTest, ShowsALineInPlaceOfNothing)
{
    AppTreemapSection section{{}};
    section.show();
    EXPECT_THAT(namesOf(elementsOf(section, QAccessible::StaticText)),
        ElementsAre("应用的活跃时长", "暂无数据"));
    section.setAppUsage(twoApps());
    EXPECT_THAT(namesOf(elementsOf(section, QAccessible::StaticText)),
        ElementsAre("应用的活跃时长", "Editor", "Web"));
}

TEST(AppTreemapSectionTest, GivesCellsAndLegendTheSameColours)
{
    AppTreemapSection section{{}};
    section.setAppUsage(twoApps());
    const QPalette palette = section.palette();
    EXPECT_THAT(paintingOf(*section.findChild<Legend*>()).circles(),
        ElementsAre(
            Look::color(SystemColor::blue, palette), Look::color(SystemColor::green, palette)));
    const auto& cells = section.findChild<AppTreemap*>()->marks();
    EXPECT_EQ(cells[0].fills[0].color, Tint{SystemColor::blue}.color);
    EXPECT_EQ(cells[1].fills[0].color, Tint{SystemColor::green}.color);
}

TEST(AppTreemapSectionTest, NamesTwentyApplicationsWithTheirCategories)
{
    std::vector<AppUsage> apps;
    for (int i = 0; i < 25; ++i) {
        apps.push_back({.appName = "App" + std::to_string(i),
            .totalSeconds = 100.0 - i,
            .categoryLabel = "浏览器"});
    }
    AppTreemapSection section{{}};
    section.show();
    section.setAppUsage(apps);
    const auto chips = section.findChildren<Chip*>();
    ASSERT_EQ(chips.size(), 20);
    EXPECT_EQ(chips[19]->toolTip(), "App19 — 浏览器");
    EXPECT_EQ(elementsOf(section, QAccessible::Cell).size(), 20U);
    EXPECT_EQ(section.findChild<AppTreemap*>()->sizeHint().height(), 440);
}

} // namespace
} // namespace quillbrook
