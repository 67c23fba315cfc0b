#include "pages/figures/AboutFigures.h"
#include "pages/kit/BorderedButton.h"
#include "pages/kit/FigureCard.h"
#include "pages/kit/IconButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/MenuPicker.h"
#include "pages/kit/NoteBox.h"
#include "pages/kit/Panel.h"
#include "pages/kit/Section.h"
#include "pages/kit/SegmentedPicker.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TintedLabel.h"
#include "pages/views/AboutView.h"
#include "pages/views/AlertsView.h"
#include "pages/views/FocusView.h"
#include "pages/views/HabitView.h"
#include "pages/views/IdlesView.h"
#include "pages/views/KeylogView.h"
#include "pages/views/SessionsView.h"
#include "pages/views/iLifeView.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {
namespace {

using testing::ElementsAre;

/// What of a page is no text: how wide and how far apart its parts are, and their symbols.
class PageFormTest : public PagesFixture {
protected:
    template <typename Widget>
    static Widget& part(const QWidget& page)
    {
        return *page.findChild<Widget*>();
    }

    /// The symbols that stand by themselves.
    static std::vector<std::string> symbols(const QWidget& page)
    {
        std::vector<std::string> names;
        for (const auto* label : page.findChildren<SymbolLabel*>()) {
            names.push_back(label->symbolName().toStdString());
        }
        return names;
    }

    static std::string symbolOf(const QAbstractButton& button)
    {
        if (const auto* icon = qobject_cast<const IconButton*>(&button)) {
            return icon->symbolName().toStdString();
        }
        return dynamic_cast<const BorderedButton&>(button).symbolName().toStdString();
    }

    /// The heights of a page's pictures, in their order.
    static std::vector<int> pictureHeights(const QWidget& page)
    {
        std::vector<int> heights;
        for (const auto* view : page.findChildren<MarkView*>()) {
            heights.push_back(view->height());
        }
        return heights;
    }

    static int betweenCards(const QWidget& page)
    {
        const auto cards = page.findChildren<FigureCard*>();
        return cards.at(1)->x() - cards.at(0)->x() - cards.at(0)->width();
    }

    /// Left and upper margin of a page's column, and the room between its parts.
    static std::vector<int> spacing(Page& page)
    {
        const QMargins margins = page.column()->contentsMargins();
        return {margins.left(), margins.top(), page.column()->spacing()};
    }

    static int heightOfNothing(const Section& section)
    {
        for (const auto* label : section.findChildren<QLabel*>()) {
            if (label->text() == "暂无数据" || label->text() == "加载中…") {
                return label->minimumHeight();
            }
        }
        return 0;
    }

    static DashboardData someData()
    {
        KeylogHourly nine{.hour = 9, .keystrokes = 300};
        nine.apps = {{"Editor", {200, "english"}}};
        return {.keylogHourly = {nine},
            .categoryUsage = {{.label = "x", .totalSeconds = 60}},
            .focusHours = {{.hour = 9, .activeSec = 60, .activeDays = 1}},
            .durationBuckets = {{.label = "x", .count = 1}},
            .dailyAvgSessions = {{.date = "01-01", .avgUnder5 = 1}}};
    }
};

TEST_F(PageFormTest, OfHabit)
{
    const auto page = shownPage<HabitView>(someData());
    EXPECT_THAT(spacing(*page), ElementsAre(24, 24, 20));
    EXPECT_EQ(part<SegmentedPicker>(*page).width(), 260);
    EXPECT_EQ(symbolOf(button(*page, "管理App分类")), "tag");
    EXPECT_EQ(button(*page, "管理App分类").toolTip(), "管理App分类");
    EXPECT_EQ(pictureHeights(*page).at(0), 240);
    const auto sections = page->findChildren<Section*>();
    EXPECT_EQ(heightOfNothing(*sections.at(0)), 180);
    EXPECT_EQ(heightOfNothing(*sections.at(1)), 120);
    EXPECT_EQ(heightOfNothing(*sections.at(2)), 200);
    EXPECT_EQ(sections.at(1)->contentsMargins(), QMargins(20, 20, 20, 20));
}

TEST_F(PageFormTest, OfTokens)
{
    const auto page = shownPage<KeylogView>(someData());
    EXPECT_THAT(spacing(*page), ElementsAre(24, 24, 20));
    EXPECT_EQ(part<SegmentedPicker>(*page).width(), 240);
    EXPECT_EQ(symbolOf(button(*page, "Token 换算逻辑")), "info.circle");
    EXPECT_EQ(betweenCards(*page), 16);
    EXPECT_THAT(pictureHeights(*page), ElementsAre(170, testing::Gt(140), 140));
    const auto sections = page->findChildren<Section*>();
    EXPECT_EQ(sections.at(1)->width(), 180);
    EXPECT_EQ(sections.at(1)->x() - sections.at(0)->x() - sections.at(0)->width(), 16);
    EXPECT_EQ(sections.at(0)->pos(), QPoint(16, 16)); // in their panel
    EXPECT_EQ(heightOfNothing(*sections.at(1)), 120);
}

TEST_F(PageFormTest, OfFocus)
{
    const auto page = shownPage<FocusView>(someData());
    EXPECT_THAT(spacing(*page), ElementsAre(24, 24, 20));
    EXPECT_EQ(part<SegmentedPicker>(*page).width(), 280);
    EXPECT_EQ(symbolOf(button(*page, "刷新")), "arrow.clockwise");
    EXPECT_EQ(betweenCards(*page), 12);
    EXPECT_THAT(pictureHeights(*page), ElementsAre(200, 180, 180));
    const auto sections = page->findChildren<Section*>();
    EXPECT_EQ(sections.at(1)->height(), 320);
    EXPECT_NEAR(sections.at(1)->width(), sections.at(2)->width(), 1);
    EXPECT_EQ(sections.at(1)->y(), sections.at(2)->y());
    EXPECT_EQ(sections.at(2)->x() - sections.at(1)->x() - sections.at(1)->width(), 12);
    for (const Section* section : sections) {
        EXPECT_EQ(heightOfNothing(*section), 120);
    }
}

TEST_F(PageFormTest, OfSessions)
{
    const auto page = shownPage<SessionsView>({});
    EXPECT_THAT(spacing(*page), ElementsAre(24, 24, 16));
    std::vector<int> widths;
    for (const auto* picker : page->findChildren<MenuPicker*>()) {
        widths.push_back(picker->width());
    }
    EXPECT_THAT(widths, ElementsAre(130, 100, 110));
    EXPECT_THAT(symbols(*page), ElementsAre("info.circle.fill", "doc.text.magnifyingglass"));
    EXPECT_EQ(page->findChildren<SymbolLabel*>().at(1)->width(), 48);
    EXPECT_EQ(symbolOf(button(*page, "刷新")), "arrow.clockwise");
    EXPECT_EQ(part<NoteBox>(*page).contentsMargins(), QMargins(12, 12, 12, 12));
    EXPECT_EQ(part<TintedLabel>(part<NoteBox>(*page)).palette().color(QPalette::WindowText),
        Look::color(SystemColor::green, page->palette()));
}

TEST_F(PageFormTest, OfIdles)
{
    const auto page = shownPage<IdlesView>({});
    EXPECT_THAT(spacing(*page), ElementsAre(24, 24, 16));
    EXPECT_THAT(symbols(*page), ElementsAre("info.circle.fill", "moon.zzz"));
    EXPECT_EQ(page->findChildren<SymbolLabel*>().at(1)->width(), 48);
    EXPECT_EQ(symbolOf(button(*page, "刷新")), "arrow.clockwise");
    EXPECT_EQ(part<TintedLabel>(part<NoteBox>(*page)).palette().color(QPalette::WindowText),
        Look::color(SystemColor::blue, page->palette()));
    EXPECT_EQ(part<TintedLabel>(*page).text(), "合计 0秒");
    EXPECT_EQ(part<TintedLabel>(*page).palette().color(QPalette::WindowText),
        Look::color(SystemColor::orange, page->palette()));
}

TEST_F(PageFormTest, OfAlerts)
{
    const auto page = shownPage<AlertsView>({});
    EXPECT_EQ(part<SegmentedPicker>(*page).width(), 280);
    EXPECT_EQ(symbolOf(button(*page, "告警触发条件")), "info.circle");
    EXPECT_THAT(symbols(*page), ElementsAre("checkmark.shield.fill"));
    auto& card = part<quillbrook::Panel>(*page);
    EXPECT_EQ(card.x(), 24);
    EXPECT_EQ(card.width(), page->widget()->width() - 2 * 24);
    EXPECT_GE(card.height(), 300);
    EXPECT_EQ(card.contentsMargins(), QMargins(24, 24, 24, 24));
    button(*page, "告警触发条件").click();
    EXPECT_THAT(symbols(*QApplication::activePopupWidget()),
        ElementsAre("cpu", "cpu", "memorychip", "arrow.triangle.swap", "display",
            "display.trianglebadge.exclamationmark"));
    press(*QApplication::activePopupWidget(), Qt::Key_Escape);
}

TEST_F(PageFormTest, OfFuture)
{
    const auto page = shownPage<iLifeView>({});
    EXPECT_THAT(spacing(*page), ElementsAre(24, 16, 20));
    EXPECT_EQ(betweenCards(*page), 16);
    EXPECT_EQ(part<quillbrook::Panel>(*page).contentsMargins(), QMargins(20, 20, 20, 20));
}

TEST_F(PageFormTest, OfAbout)
{
    const auto page = shownPage<AboutView>({});
    std::vector<std::string> expected{"chart.bar.doc.horizontal"};
    for (const Feature& feature : kFeatures) {
        expected.emplace_back(feature.symbol);
    }
    expected.emplace_back("lock.shield.fill");
    EXPECT_EQ(symbols(*page), expected);
}

} // namespace
} // namespace quillbrook
