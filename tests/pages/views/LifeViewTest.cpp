#include "pages/kit/Frames.h"
#include "pages/kit/MenuPicker.h"
#include "pages/motion/FlipClockContainer.h"
#include "pages/motion/FlipDigitView.h"
#include "pages/motion/LifeCellView.h"
#include "pages/motion/MonkBellButton.h"
#include "pages/views/LifeGridView.h"
#include "pages/views/iLifeView.h"
#include "support/AccessibleEvents.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

#include <QMenu>
#include <QPaintEvent>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;

/// Collects what of a widget is painted.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    QRegion painted{};
};

class LifeViewTest : public PagesFixture {
protected:
    void open() { page = shownPage<iLifeView>({}); }

    template <typename Widget>
    Widget& part()
    {
        return *page->findChild<Widget*>();
    }

    std::vector<std::string> cells() { return namesOf(elementsOf(*page, QAccessible::Cell)); }

    void strike() { part<MonkBellButton>().click(); }

    std::string clock() { return part<FlipClockContainer>().accessibleName().toStdString(); }

    std::vector<FlipDigitView*> tiles()
    {
        const auto found = page->findChildren<FlipDigitView*>();
        return {found.begin(), found.end()};
    }

    std::vector<double> opacities()
    {
        std::vector<double> all;
        for (const FlipDigitView* tile : tiles()) {
            all.push_back(tile->opacity());
        }
        return all;
    }

    std::string digits()
    {
        std::string all;
        for (const FlipDigitView* tile : tiles()) {
            all += std::to_string(tile->displayedDigit());
        }
        return all;
    }

    std::unique_ptr<iLifeView> page{};
};

TEST_F(LifeViewTest, ShowsItsPartsInOrder)
{
    open();
    const auto texts = elementsOf(*page, QAccessible::StaticText);
    std::vector<std::string> names = namesOf(texts);
    EXPECT_EQ(names[0], "The Future Is a Mystery");
    EXPECT_EQ(names[1], "08:00:00");
    EXPECT_EQ(texts[2], (Element{QAccessible::StaticText, "生命已逝/天", "13880"}));
    EXPECT_EQ(texts[3], (Element{QAccessible::StaticText, "今年已过", "1"}));
    EXPECT_EQ(texts[4], (Element{QAccessible::StaticText, "人生进度", "45.2%"}));
    EXPECT_EQ(texts[5], (Element{QAccessible::StaticText, "当年进度", "0.3%"}));
    names.erase(names.begin(), names.begin() + 6);
    EXPECT_THAT(std::vector(names.begin(), names.begin() + 6),
        ElementsAre("当年进度", "0.3%", "1/365", "生命进度", "选择出生年度", "🐀 子"));
    EXPECT_EQ(names[names.size() - 2],
        "生命进度相对于上海人均寿命计算；根据2025年国家卫健委及地方卫健委最新统计，"
        "上海市人均84.11岁，以此为基准乐观计算。");
    EXPECT_EQ(names.back(), "过去心不可得，现在心不可得，未来心不可得");
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::Button)), Contains("点击敲木鱼"));
    EXPECT_THAT(elementsOf(*page, QAccessible::Indicator),
        ElementsAre(Element{QAccessible::Indicator, "当年进度", "0.0027397260273972603"}));
}

TEST_F(LifeViewTest, ReadsTheWholeGrid)
{
    open();
    ASSERT_EQ(cells().size(), 108U);
    EXPECT_EQ(cells()[3], "出生前");
    EXPECT_EQ(cells()[4], "1 岁，出生，已过");
    EXPECT_EQ(cells()[41], "38 岁，现在");
    EXPECT_EQ(cells()[87], "84 岁，人均寿命，未来");
}

TEST_F(LifeViewTest, WalksThroughTheYearsByKeys)
{
    open();
    auto& grid = part<LifeGridView>();
    grid.setFocus();
    press(grid, Qt::Key_Home);
    press(grid, Qt::Key_Right);
    ASSERT_TRUE(grid.currentMark());
    EXPECT_EQ(grid.marks()[*grid.currentMark()].name, "出生前");
    press(grid, Qt::Key_End);
    EXPECT_EQ(grid.marks()[*grid.currentMark()].name, "104 岁，恩赐");
}

TEST_F(LifeViewTest, TakesTheBirthYearFromTheSettings)
{
    machine.userDefaults.setInteger("birthYear", 1984);
    open();
    EXPECT_EQ(cells()[0], "1 岁，出生，已过");
    EXPECT_EQ(part<MenuPicker>().accessibleValue(), "1984 年");
}

TEST_F(LifeViewTest, LetsTheBirthYearBePicked)
{
    open();
    auto& picker = part<MenuPicker>();
    EXPECT_EQ(picker.width(), 160);
    EXPECT_EQ(picker.accessibleName(), "选择出生年度");
    EXPECT_EQ(picker.accessibleValue(), "1988 年");
    const std::unique_ptr<QMenu> menu(picker.makeMenu());
    ASSERT_EQ(menu->actions().size(), 51);
    EXPECT_EQ(menu->actions().first()->text(), "1970 年");
    EXPECT_EQ(menu->actions().last()->text(), "2020 年");
    const AccessibleEvents events;
    menu->actions().first()->trigger();
    EXPECT_THAT(events.of(part<LifeGridView>()), Contains(QAccessible::NameChanged));
    EXPECT_EQ(machine.userDefaults.integerForKey("birthYear"), 1970);
    EXPECT_EQ(cells()[9], "出生前");
    EXPECT_EQ(cells()[10], "1 岁，出生，已过");
    EXPECT_THAT(elementsOf(*page, QAccessible::StaticText),
        IsSupersetOf({Element{QAccessible::StaticText, "生命已逝/天", "20454"},
            Element{QAccessible::StaticText, "人生进度", "66.6%"}}));
}

TEST_F(LifeViewTest, StoresNothingBeforeAYearIsPicked)
{
    open();
    EXPECT_TRUE(machine.userDefaults.all().empty());
}

TEST_F(LifeViewTest, ShowsAStoredYearThatCanNotBePicked)
{
    machine.userDefaults.setInteger("birthYear", 2030);
    open();
    EXPECT_EQ(part<MenuPicker>().accessibleValue(), "2030 年");
    EXPECT_EQ(part<MenuPicker>().accessibleDescription(), "2030 年");
    EXPECT_THAT(cells(), Contains("1 岁，出生，未来"));
    EXPECT_FALSE(part<LifeCellView>().isVisible());
    EXPECT_EQ(machine.userDefaults.integerForKey("birthYear"), 2030);
}

TEST_F(LifeViewTest, SurvivesAStoredValueThatIsNoYear)
{
    for (const double value : {-1e18, 1e18, 1e300, -5.0, 0.5}) {
        machine.userDefaults.setDouble("birthYear", value);
        open();
        EXPECT_EQ(part<MenuPicker>().accessibleValue(), "1988 年") << value;
    }
}

TEST_F(LifeViewTest, FollowsTheComputersZone)
{
    machine.timeZone.setSecondsFromUtc(-3600);
    open();
    EXPECT_EQ(clock(), "23:00:00");
    EXPECT_THAT(elementsOf(*page, QAccessible::StaticText),
        Contains(Element{QAccessible::StaticText, "今年已过", "365"}));
    EXPECT_EQ(cells()[40], "37 岁，现在");
}

TEST_F(LifeViewTest, LaysThePresentCellOverItsPlace)
{
    open();
    auto& grid = part<LifeGridView>();
    auto& cell = part<LifeCellView>();
    const Rect place = bounds(
        grid
            .marks()[*std::find_if(grid.spokenMarks().begin(), grid.spokenMarks().end(),
                [&](std::size_t mark) { return grid.marks()[mark].name == "38 岁，现在"; })]
            .shape);
    EXPECT_TRUE(cell.geometry().contains(
        QRectF(place.x, place.y, place.width, place.height).toAlignedRect()));
    const int before = cell.x();
    page->resize(900, 500);
    QCoreApplication::processEvents();
    EXPECT_GT(cell.x(), before);
    EXPECT_EQ(grid.childAt(cell.geometry().center()), nullptr); // the pointer reaches the grid
}

TEST_F(LifeViewTest, RepaintsThePresentCellAlone)
{
    open();
    page->resize(600, 1400); // nothing is scrolled out of sight
    auto& grid = part<LifeGridView>();
    auto& cell = part<LifeCellView>();
    strike();
    machine.runFor(0.2);
    QCoreApplication::processEvents();
    const PaintWatch watch(grid);
    cell.update();
    QCoreApplication::processEvents();
    EXPECT_FALSE(watch.painted.isEmpty());
    EXPECT_TRUE(watch.painted.subtracted(cell.geometry()).isEmpty());
}

TEST_F(LifeViewTest, IsStillUntilTheBellIsStruck)
{
    open();
    machine.runFor(0.6);
    EXPECT_EQ(part<LifeCellView>().level(), 0);
    EXPECT_FALSE(part<LifeCellView>().findChild<Frames*>()->areRunning());
    EXPECT_FALSE(part<MonkBellButton>().findChild<Frames*>()->areRunning());
}

TEST_F(LifeViewTest, LetsThePresentCellSwellAndSwingBackForEver)
{
    open();
    auto& cell = part<LifeCellView>();
    strike();
    EXPECT_TRUE(cell.findChild<Frames*>()->areRunning());
    machine.runFor(0.4);
    EXPECT_NEAR(cell.level(), 0.5, 1e-6);
    machine.runFor(0.1);
    const double reached = cell.level();
    EXPECT_NEAR(reached, 1 - 2 * 0.375 * 0.375, 1e-6);
    machine.runFor(0.8);
    EXPECT_NEAR(cell.level(), 0, 1e-6);
    machine.runFor(0.8);
    EXPECT_NEAR(cell.level(), reached, 1e-6);
    machine.runFor(1.6 * 100);
    EXPECT_NEAR(cell.level(), reached, 1e-6);
    page->hide();
    EXPECT_FALSE(cell.findChild<Frames*>()->areRunning());
}

TEST_F(LifeViewTest, HoldsTheDrumDownForHalfASecond)
{
    open();
    auto& bell = part<MonkBellButton>();
    EXPECT_EQ(bell.drumScale(), 1);
    EXPECT_EQ(bell.monkScale(), 1);
    strike();
    EXPECT_EQ(bell.drumScale(), 1);
    EXPECT_EQ(bell.monkScale(), 0.9);
    machine.runFor(0.15);
    EXPECT_LT(bell.drumScale(), 0.85); // the spring swings over
    machine.runFor(0.34);
    EXPECT_NEAR(bell.drumScale(), 0.85, 0.002);
    EXPECT_EQ(bell.monkScale(), 1);
    machine.runFor(1);
    EXPECT_EQ(bell.drumScale(), 1);
}

TEST_F(LifeViewTest, AnswersTheKeyboardToo)
{
    open();
    press(part<MonkBellButton>(), Qt::Key_Space);
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass"));
}

TEST_F(LifeViewTest, SoundsLikeGlass)
{
    open();
    strike();
    machine.runFor(2);
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass"));
}

TEST_F(LifeViewTest, SoundsLikePingWithoutGlass)
{
    machine.systemSound.setSounds({"Ping"});
    open();
    strike();
    machine.runFor(2);
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass", "Ping"));
}

TEST_F(LifeViewTest, BeepsWithoutSoundsAndSwellsAllTheSame)
{
    machine.systemSound.setSounds({});
    open();
    strike();
    machine.runFor(0.4);
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass", "Ping", "beep"));
    EXPECT_GT(part<LifeCellView>().level(), 0.4);
}

TEST_F(LifeViewTest, CanBeLeftWhileTheBellSounds)
{
    open();
    strike();
    page.reset();
    machine.runFor(5);
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass"));
}

TEST_F(LifeViewTest, TicksWithTheSeconds)
{
    machine.clock.set(kNow + 0.25);
    open();
    EXPECT_EQ(clock(), "08:00:00");
    machine.runFor(0.74);
    EXPECT_EQ(clock(), "08:00:00");
    machine.runFor(0.01);
    EXPECT_EQ(clock(), "08:00:01");
    machine.runFor(59);
    EXPECT_EQ(clock(), "08:01:00");
}

TEST_F(LifeViewTest, SwapsADigitAtTheDarkestMoment)
{
    open();
    machine.runFor(1);
    EXPECT_EQ(digits(), "080000");
    EXPECT_THAT(opacities(), Each(1.0));
    machine.runFor(0.05);
    EXPECT_THAT(opacities(), ElementsAre(1, 1, 1, 1, 1, testing::DoubleNear(0.75, 1e-6)));
    machine.runFor(0.05);
    EXPECT_EQ(digits(), "080001");
    EXPECT_NEAR(opacities()[5], 0.5, 1e-6);
    machine.runFor(0.075);
    EXPECT_NEAR(opacities()[5], 0.75, 1e-6);
    machine.runFor(0.075);
    EXPECT_NEAR(opacities()[5], 1, 1e-6);
    EXPECT_EQ(digits(), "080001");
}

TEST_F(LifeViewTest, ChangesAllTilesAtOnceAtTenOClock)
{
    machine.clock.set(kNow + 2 * 3600 - 1); // 09:59:59
    open();
    EXPECT_EQ(digits(), "095959");
    machine.runFor(1.05);
    EXPECT_THAT(opacities(), Each(testing::DoubleNear(0.75, 1e-6)));
    machine.runFor(0.05);
    EXPECT_EQ(digits(), "100000");
}

TEST_F(LifeViewTest, CarriesTheDigitOfEachChange)
{
    open();
    FlipDigitView& tile = *tiles()[5];
    tile.setDigit(7);
    machine.runFor(0.06);
    tile.setDigit(8);
    machine.runFor(0.04);
    EXPECT_EQ(tile.displayedDigit(), 7);
    machine.runFor(0.06);
    EXPECT_EQ(tile.displayedDigit(), 8);
}

TEST_F(LifeViewTest, SleepsWhileItIsHidden)
{
    open();
    page->hide();
    machine.runFor(10);
    EXPECT_EQ(clock(), "08:00:00");
    static_cast<QWidget&>(*page).show();
    EXPECT_EQ(clock(), "08:00:10");
    machine.runFor(1);
    EXPECT_EQ(clock(), "08:00:11");
}

TEST_F(LifeViewTest, KeepsTheYearItWasMadeIn)
{
    machine.clock.set(kNow - 8 * 3600 - 1); // a second before the year
    open();
    EXPECT_EQ(cells()[40], "37 岁，现在");
    machine.runFor(5);
    page->hide();
    static_cast<QWidget&>(*page).show();
    EXPECT_EQ(cells()[40], "37 岁，现在");
    EXPECT_EQ(clock(), "00:00:04");
}

TEST_F(LifeViewTest, PutsBellAndClockBesideItsTitleInANewWindow)
{
    open();
    page->resize(960 - 220, 598); // beside the sidebar
    QCoreApplication::processEvents();
    const auto middle = [this](const QWidget& widget) {
        return widget.mapTo(page.get(), widget.rect().center());
    };
    const QPoint bell = middle(part<MonkBellButton>());
    const QPoint clock = middle(part<FlipClockContainer>());
    EXPECT_NEAR(clock.y(), bell.y(), 1);
    EXPECT_GT(clock.x(), bell.x());
}

TEST_F(LifeViewTest, FitsTheSmallestWindow)
{
    open();
    const QWidget& inside = *page->widget();
    EXPECT_LE(inside.minimumSizeHint().width(), 600);
    for (const auto* child : inside.findChildren<QWidget*>()) {
        if (child->isVisibleTo(&inside)) {
            const QRect place(child->mapTo(&inside, QPoint()), child->size());
            EXPECT_TRUE(inside.rect().contains(place)) << child->metaObject()->className();
        }
    }
}

} // namespace
} // namespace quillbrook
