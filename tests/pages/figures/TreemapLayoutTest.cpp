#include "pages/figures/TreemapLayout.h"

#include "pages/figures/AppPalette.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace quillbrook {
namespace {

using testing::ElementsAre;

AppUsage app(const std::string& name, double seconds)
{
    return {.appName = name, .totalSeconds = seconds, .categoryLabel = "浏览器"};
}

std::vector<Rect> rectsOf(const std::vector<Cell>& cells)
{
    std::vector<Rect> rects;
    for (const Cell& cell : cells) {
        rects.push_back(cell.rect);
    }
    return rects;
}

std::vector<std::string> namesOf(const std::vector<Cell>& cells)
{
    std::vector<std::string> names;
    for (const Cell& cell : cells) {
        names.push_back(cell.app.appName);
    }
    return names;
}

TEST(ComputeCells, GivesOneApplicationTheWholeView)
{
    const std::vector apps{app("A", 10)};
    EXPECT_THAT(rectsOf(computeCells(apps, {400, 200})), ElementsAre(Rect{0, 0, 400, 200}));
}

TEST(ComputeCells, CutsAColumnForTheLargest)
{
    const std::vector apps{app("A", 75), app("B", 25)};
    EXPECT_THAT(rectsOf(computeCells(apps, {400, 200})),
        ElementsAre(Rect{0, 0, 300, 200}, Rect{300, 0, 100, 200}));
}

TEST(ComputeCells, GivesNoAreaForZeroSeconds)
{
    const std::vector apps{app("A", 75), app("B", 25), app("C", 0)};
    EXPECT_THAT(rectsOf(computeCells(apps, {400, 200})),
        ElementsAre(Rect{0, 0, 300, 200}, Rect{300, 0, 100, 200}, Rect{300, 200, 100, 0}));
}

TEST(ComputeCells, TurnsToABandForTheSecond)
{
    const std::vector apps{app("A", 50), app("B", 30), app("C", 20)};
    EXPECT_THAT(rectsOf(computeCells(apps, {400, 200})),
        ElementsAre(Rect{0, 0, 200, 200}, Rect{200, 0, 200, 120}, Rect{200, 120, 200, 80}));
}

TEST(ComputeCells, SortsAndKeepsTheOrderOfEqualSeconds)
{
    const std::vector apps{app("A", 10), app("B", 20), app("C", 10), app("D", 20)};
    EXPECT_THAT(namesOf(computeCells(apps, {400, 200})), ElementsAre("B", "D", "A", "C"));
}

TEST(ComputeCells, IsEmptyWithoutAppsAreaOrSeconds)
{
    const std::vector apps{app("A", 10)};
    const std::vector idle{app("A", 0), app("B", 0)};
    EXPECT_TRUE(computeCells({}, {400, 200}).empty());
    EXPECT_TRUE(computeCells(apps, {0, 200}).empty());
    EXPECT_TRUE(computeCells(apps, {400, 0}).empty());
    EXPECT_TRUE(computeCells(idle, {400, 200}).empty());
}

TEST(ComputeCells, StartsThePaletteOverBehindItsEnd)
{
    std::vector<AppUsage> apps;
    for (int i = 0; i < 15; ++i) {
        apps.push_back(app("App" + std::to_string(i), 100 - i));
    }
    const auto cells = computeCells(apps, {400, 200});
    EXPECT_EQ(cells[0].color, SystemColor::blue);
    EXPECT_EQ(cells[12].color, SystemColor::gray);
    EXPECT_EQ(cells[13].color, SystemColor::blue);
    EXPECT_EQ(cells[14].color, SystemColor::green);
}

TEST(ComputeCells, GivesOneNameOneColor)
{
    const std::vector apps{app("A", 50), app("B", 30), app("A", 20)};
    const auto cells = computeCells(apps, {400, 200});
    EXPECT_EQ(cells[2].color, cells[0].color);
    EXPECT_NE(cells[1].color, cells[0].color);
}

TEST(FmtMin, CutsMinutesOff)
{
    EXPECT_EQ(fmtMin(0), "<1m");
    EXPECT_EQ(fmtMin(59), "<1m");
    EXPECT_EQ(fmtMin(60), "1m");
    EXPECT_EQ(fmtMin(2579), "42m");
    EXPECT_EQ(fmtMin(3600), "1h0m");
    EXPECT_EQ(fmtMin(3900), "1h5m");
}

TEST(FmtMinDeathTest, StopsAtWhatIsNoNumber)
{
    EXPECT_DEATH(fmtMin(std::numeric_limits<double>::infinity()), "truncated");
}

TEST(RoomForText, IsStrictlyAboveTheBounds)
{
    EXPECT_FALSE(hasRoomForName({0, 0, 50, 100}));
    EXPECT_TRUE(hasRoomForName({0, 0, 50.1, 100}));
    EXPECT_FALSE(hasRoomForName({0, 0, 100, 18}));
    EXPECT_TRUE(hasRoomForName({0, 0, 100, 18.1}));
    EXPECT_FALSE(hasRoomForTime({0, 0, 100, 32}));
    EXPECT_TRUE(hasRoomForTime({0, 0, 100, 32.1}));
    EXPECT_FALSE(hasRoomForTime({0, 0, 50, 100}));
}

TEST(CellAt, FindsTheFirstThatHoldsThePoint)
{
    const std::vector apps{app("A", 75), app("B", 25)};
    const auto cells = computeCells(apps, {400, 200});
    EXPECT_EQ(cellAt(cells, {0, 0}), 0U);
    EXPECT_EQ(cellAt(cells, {299.9, 10}), 0U);
    EXPECT_EQ(cellAt(cells, {300, 10}), 1U);
    EXPECT_EQ(cellAt(cells, {400, 10}), std::nullopt);
    EXPECT_EQ(cellAt(cells, {-1, 10}), std::nullopt);
}

TEST(CellNamed, FindsTheFirstOfThatName)
{
    const std::vector apps{app("A", 50), app("B", 30), app("B", 20)};
    const auto cells = computeCells(apps, {400, 200});
    EXPECT_EQ(cellNamed(cells, "B"), 1U);
    EXPECT_EQ(cellNamed(cells, "C"), std::nullopt);
}

TEST(TooltipCenter, StaysInTheTreemap)
{
    EXPECT_EQ(tooltipCenter({0, 0, 40, 40}, 400), (Point{60, 18}));
    EXPECT_EQ(tooltipCenter({380, 100, 20, 40}, 400), (Point{340, 88}));
    EXPECT_EQ(tooltipCenter({100, 100, 100, 40}, 400), (Point{150, 88}));
}

TEST(CategoryColor, ComesFromTheLabel)
{
    EXPECT_EQ(categoryColor("浏览器"), colorFromHex("#F59E0B"));
    EXPECT_EQ(categoryColor("未分类"), colorFromHex("#9CA3AF"));
    EXPECT_EQ(categoryColor("no such label"), colorFromHex("#9CA3AF"));
}

TEST(TreemapSet, IsTheFirstTwenty)
{
    const std::vector<AppUsage> many(25, app("A", 1));
    EXPECT_EQ(treemapSet(many).size(), 20U);
    EXPECT_EQ(treemapSet(std::span(many).first(20)).size(), 20U);
    EXPECT_EQ(treemapSet(std::span(many).first(3)).size(), 3U);
    EXPECT_TRUE(treemapSet({}).empty());
}

TEST(LegendHelp, NamesTheCategory)
{
    EXPECT_EQ(legendHelp(app("Firefox", 1)), "Firefox — 浏览器");
}

} // namespace
} // namespace quillbrook
