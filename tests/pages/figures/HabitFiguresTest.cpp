#include "pages/figures/HabitFigures.h"

#include "base/Utc8Day.h"
#include "categories/SeedTables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TextWidth kFivePoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 5; };

CategoryUsage usage(std::string key, std::string label, double seconds)
{
    return {.category = std::move(key), .label = std::move(label), .totalSeconds = seconds};
}

CategoryTrendPoint point(std::int64_t day, std::string key, double hours)
{
    return {.date = utc8DayStart(day), .category = key, .label = "L" + key, .hours = hours};
}

std::vector<Rect> rectsOf(const std::vector<CategoryUsage>& items, Size size)
{
    std::vector<Rect> rects;
    for (const CategoryCell& cell : computeCategoryCells(items, size)) {
        rects.push_back(cell.rect);
    }
    return rects;
}

std::vector<Mark> ofRole(std::vector<Mark> marks, MarkRole role)
{
    std::erase_if(marks, [role](const Mark& mark) { return mark.role != role; });
    return marks;
}

std::vector<std::string> spoken(const std::vector<Mark>& marks, MarkRole role)
{
    std::vector<std::string> texts;
    for (const Mark& mark : ofRole(marks, role)) {
        texts.push_back(mark.value.empty() ? mark.name : mark.name + "=" + mark.value);
    }
    return texts;
}

TEST(CategoryColorHex, IsThatOfTheTableAndGrayForAnUnknownKey)
{
    for (const CategorySeed& category : categorySeedTable) {
        EXPECT_EQ(categoryColorHex(category.key), category.color);
    }
    EXPECT_EQ(categoryColorHex("nowhere"), "#9CA3AF");
}

TEST(ComputeCategoryCells, SliceTheRectangleInTurn)
{
    EXPECT_THAT(rectsOf({usage("a", "A", 60)}, {300, 200}), ElementsAre(Rect{0, 0, 300, 200}));
    EXPECT_THAT(
        rectsOf({usage("a", "A", 30), usage("b", "B", 20), usage("c", "C", 50)}, {100, 100}),
        ElementsAre(Rect{0, 0, 50, 100}, Rect{50, 0, 50, 60}, Rect{50, 60, 50, 40}));
    EXPECT_THAT(rectsOf({usage("a", "A", 0), usage("b", "B", 0)}, {100, 100}), IsEmpty());
    EXPECT_THAT(rectsOf({usage("a", "A", 60)}, {0, 100}), IsEmpty());
}

TEST(CategoryTreemapMarks, NameTheCellsThatAreLargeEnough)
{
    const auto texts = [](double width, double height) {
        return categoryTreemapMarks(std::vector{usage("x", "X", 5400)}, {width, height})[0].texts;
    };
    EXPECT_THAT(texts(50, 100), IsEmpty());
    EXPECT_EQ(texts(51, 19).size(), 1U);
    EXPECT_EQ(texts(51, 32).size(), 1U);
    ASSERT_EQ(texts(51, 33).size(), 2U);
    EXPECT_EQ(texts(51, 33)[0].text, "X");
    EXPECT_EQ(texts(100, 61.5)[1],
        (TextLine{.place = {4, 32.5, 92, 10},
            .text = "1.5h",
            .face = {TextFamily::monospaced, 8},
            .tint = {kWhite, 0.85},
            .alignment = TextAlignment::center,
            .isOnColor = true}));
}

TEST(CategoryTreemapMarks, AreCellsInTheirCategorysColour)
{
    const auto marks = categoryTreemapMarks(
        std::vector{usage("unheard", "未知", 3600), usage("b", "B", 1800)}, {100, 100});
    ASSERT_EQ(marks.size(), 3U);
    EXPECT_EQ(marks[0].role, MarkRole::cell);
    EXPECT_EQ(marks[0].name, "未知");
    EXPECT_EQ(marks[0].value, "1.0h");
    EXPECT_EQ(marks[0].help, ""); // the treemap has no tooltip
    EXPECT_EQ(marks[0].fills, (std::vector<Tint>{{Color{0x9C, 0xA3, 0xAF}, 0.65}}));
    EXPECT_EQ(marks[0].stroke, (Stroke{{InterfaceColor::windowBackground, 0.5}, 1.5}));
    EXPECT_EQ(marks[2],
        (Mark{.shape = Box{{0, 0, 100, 100}, 10},
            .stroke = Stroke{{InterfaceColor::secondaryText, 0.2}, 1}}));
}

TEST(CategoryBarMarks, AreABarOfHoursForEachCategory)
{
    const auto marks = categoryBarMarks(
        std::vector{usage("a", "Work", 9000), usage("b", "Play", 1800)}, {400, 200}, kFivePoints);
    EXPECT_THAT(spoken(marks, MarkRole::mark), ElementsAre("Work=2.5", "Play=0.5"));
    EXPECT_THAT(spoken(marks, MarkRole::text),
        testing::IsSupersetOf({"Work", "Play", "2.5h", "0.5h", "小时"}));
    const std::vector<Tint> gray{{Color{0x9C, 0xA3, 0xAF}}};
    EXPECT_EQ(ofRole(marks, MarkRole::mark)[0].fills, gray);
}

TEST(CategoryBarMarks, HaveTheirCategorysColourAndEndAtTheLongest)
{
    const auto marks = categoryBarMarks(
        std::vector{usage("development", "Work", 9000), usage("browser", "Web", 4500)}, {400, 200},
        kFivePoints);
    const auto bars = ofRole(marks, MarkRole::mark);
    EXPECT_EQ(bars[0].fills, (std::vector<Tint>{{Color{0x3B, 0x82, 0xF6}}}));
    EXPECT_EQ(bars[1].fills, (std::vector<Tint>{{Color{0xF5, 0x9E, 0x0B}}}));
    EXPECT_DOUBLE_EQ(bounds(bars[0].shape).width, 2 * bounds(bars[1].shape).width);
    // Behind the longest bar there is its annotation, and nothing else.
    EXPECT_EQ(right(bounds(bars[0].shape)), 400 - 4 - 4 * 5);
    const double row = center(bounds(bars[1].shape)).y - center(bounds(bars[0].shape)).y;
    EXPECT_DOUBLE_EQ(bounds(bars[0].shape).height, 0.7 * row);
    const auto annotation = std::find_if(
        marks.begin(), marks.end(), [](const Mark& mark) { return mark.name == "2.5h"; });
    ASSERT_NE(annotation, marks.end());
    EXPECT_EQ(annotation->texts[0].face, (TextFace{TextFamily::monospaced, 10}));
    EXPECT_EQ(annotation->texts[0].tint, secondaryTint());
}

TEST(TrendShares, DivideEachDayAmongItsCategories)
{
    const auto shares = trendShares(std::vector{
        point(20000, "a", 3), point(20001, "a", 2), point(20000, "b", 1), point(20002, "a", 0)});
    EXPECT_EQ(shares[0].hours, 0.75);
    EXPECT_EQ(shares[1].hours, 1); // alone on its day
    EXPECT_EQ(shares[2].hours, 0.25);
    EXPECT_EQ(shares[3].hours, 0); // a day without hours
    EXPECT_EQ(shares[2].label, "Lb");
}

TEST(TrendSeriesOf, AreSortedByKeyAndKeepTheirGaps)
{
    const auto series = trendSeries(
        std::vector{point(20000, "b", 1), point(20000, "a", 3), point(20002, "b", 2)});
    ASSERT_EQ(series.size(), 2U);
    EXPECT_EQ(series[0].key, "a");
    EXPECT_EQ(series[0].points.size(), 1U);
    EXPECT_EQ(series[1].label, "Lb");
    EXPECT_EQ(series[1].points.size(), 2U);
    EXPECT_EQ(series[1].colorHex, "#9CA3AF");
}

TEST(CategoryTrendMarks, AreAMarkForEachSeriesAndDay)
{
    const auto marks = categoryTrendMarks(
        std::vector{point(20454, "b", 1), point(20454, "a", 3), point(20455, "b", 2)}, {400, 250},
        kFivePoints);
    EXPECT_THAT(
        spoken(marks, MarkRole::mark), ElementsAre("La 01-01=0.75", "Lb 01-01=0.25", "Lb 01-02=1"));
    EXPECT_THAT(spoken(marks, MarkRole::text),
        testing::IsSupersetOf({"0%", "20%", "40%", "60%", "80%", "100%", "La", "Lb"}));
    EXPECT_THAT(
        categoryTrendMarks(std::vector<CategoryTrendPoint>{}, {400, 250}, kFivePoints), IsEmpty());
}

TEST(CategoryTrendMarks, StackTheSeriesInTheirCategorysColour)
{
    const Color work{0x3B, 0x82, 0xF6};
    const Color web{0xF5, 0x9E, 0x0B};
    std::vector<std::vector<Tint>> painted;
    for (const Mark& mark :
        categoryTrendMarks(std::vector{point(20454, "development", 3), point(20454, "browser", 1)},
            {400, 250}, kFivePoints)) {
        if (!mark.fills.empty()) {
            painted.push_back(mark.fills);
        }
    }
    // The areas from the highest down, then the dots of the legend in the series' order.
    EXPECT_THAT(painted,
        ElementsAre(std::vector<Tint>{{work, 0.75}}, std::vector<Tint>{{web, 0.75}},
            std::vector<Tint>{{web}}, std::vector<Tint>{{work}}));
}

} // namespace
} // namespace quillbrook
