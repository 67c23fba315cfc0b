#include "pages/figures/LifeGridMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::IsEmpty;

constexpr double kWidth = 24 + 13 * 50 + 12 * 4; // columns of 50

std::vector<LifeCellInfo> cellsOf(int birthYear, int age)
{
    return computeCellInfos(age, birthColumn(birthYear), 84);
}

std::vector<Mark> gridOf(int birthYear, int age, double width = kWidth)
{
    return lifeGridMarks(cellsOf(birthYear, age), birthColumn(birthYear), 84, width);
}

std::vector<Mark> cellOf(int birthYear, int age, std::size_t id)
{
    return lifeCellMarks(cellsOf(birthYear, age)[id], {0, 0, 50, 40}, 84);
}

/// All lines of text on a cell, from the lowest.
std::vector<TextLine> textsOf(const std::vector<Mark>& cell)
{
    std::vector<TextLine> texts;
    for (const Mark& mark : cell) {
        texts.insert(texts.end(), mark.texts.begin(), mark.texts.end());
    }
    return texts;
}

std::vector<Mark> ofRole(const std::vector<Mark>& marks, MarkRole role)
{
    std::vector<Mark> found;
    std::copy_if(marks.begin(), marks.end(), std::back_inserter(found),
        [role](const Mark& mark) { return mark.role == role; });
    return found;
}

std::vector<TextLine> white(const std::string& text, int pixels, TextWeight weight, double opacity)
{
    return {{.place = {0, 0, 50, 40},
        .text = text,
        .face = {TextFamily::system, pixels, weight},
        .tint = {kWhite, opacity},
        .alignment = TextAlignment::center,
        .isOnColor = true}};
}

std::vector<TextLine> large(const std::string& text, int pixels, double opacity = 1)
{
    return white(text, pixels, TextWeight::black, opacity);
}

std::vector<TextLine> small(const std::string& text)
{
    return white(text, 9, TextWeight::medium, 0.7);
}

std::vector<TextLine> operator+(std::vector<TextLine> below, const std::vector<TextLine>& above)
{
    below.insert(below.end(), above.begin(), above.end());
    return below;
}

TEST(LifeGrid, HasEqualColumnsWithAStemBeforeEachRow)
{
    EXPECT_EQ(lifeCellRect(0, kWidth), (Rect{12 + 54, 12 + 34, 50, 40}));
    EXPECT_EQ(lifeCellRect(11, kWidth), (Rect{12 + 12 * 54, 12 + 34, 50, 40}));
    EXPECT_EQ(lifeCellRect(12, kWidth), (Rect{12 + 54, 12 + 34 + 44, 50, 40}));
    EXPECT_EQ(lifeCellRect(107, kWidth), (Rect{12 + 12 * 54, 12 + 34 + 8 * 44, 50, 40}));
    EXPECT_EQ(right(lifeCellRect(107, kWidth)) + 12, kWidth);
    EXPECT_EQ(lifeGridHeight(), bottom(lifeCellRect(107, kWidth)) + 12);
}

TEST(LifeGrid, StandsOnABreathOfOrange)
{
    EXPECT_EQ(gridOf(1988, 38)[0],
        boxMark({0, 0, kWidth, lifeGridHeight()}, {SystemColor::orange, 0.05}, 8));
}

TEST(LifeGrid, IsHeadedByTheTwelveAnimals)
{
    const auto texts = ofRole(gridOf(1988, 38), MarkRole::text);
    ASSERT_EQ(texts.size(), 12U + 9U);
    const Mark& rat = texts[0];
    EXPECT_EQ(rat.name, "🐀 子");
    EXPECT_EQ(bounds(rat.shape), (Rect{66, 12, 50, 30}));
    ASSERT_EQ(rat.texts.size(), 2U);
    EXPECT_EQ(rat.texts[0].text, "🐀");
    EXPECT_EQ(rat.texts[0].face, (TextFace{TextFamily::system, 12}));
    EXPECT_EQ(rat.texts[1].text, "子");
    EXPECT_EQ(rat.texts[1].face, (TextFace{TextFamily::system, 9}));
    EXPECT_EQ(rat.texts[1].tint, secondaryTint());
    EXPECT_EQ(bottom(rat.texts[0].place), rat.texts[1].place.y);
    EXPECT_EQ(texts[11].name, "🐖 亥");
    for (std::size_t column = 0; column < 12; ++column) {
        const std::vector<Tint> expected
            = column == 4 ? std::vector<Tint>{{SystemColor::blue, 0.15}} : std::vector<Tint>{};
        EXPECT_EQ(texts[column].fills, expected);
    }
}

TEST(LifeGrid, NamesItsRowsByTheStems)
{
    const auto texts = ofRole(gridOf(1988, 38), MarkRole::text);
    std::string stems;
    for (std::size_t row = 0; row < 9; ++row) {
        stems += texts[12 + row].name;
    }
    EXPECT_EQ(stems, "甲乙丙丁戊己庚辛壬");
    const TextLine& first = texts[12].texts[0];
    EXPECT_EQ(first.face, (TextFace{TextFamily::system, 12, TextWeight::medium}));
    EXPECT_EQ(first.tint, secondaryTint());
    EXPECT_EQ(first.place, (Rect{12, 46, 50, 40}));
}

TEST(LifeGrid, ReadsEveryCellAndLeavesThePresentOneToOthers)
{
    const auto infos = cellsOf(1988, 38);
    std::vector<Mark> expected;
    for (const LifeCellInfo& info : infos) {
        auto cell = lifeCellMarks(info, lifeCellRect(info.id, kWidth), 84);
        if (info.id == 41) {
            cell = {{.shape = cell[0].shape,
                .role = MarkRole::cell,
                .name = "38 岁，现在",
                .help = "38 岁，现在"}};
        }
        expected.insert(expected.end(), cell.begin(), cell.end());
    }
    auto marks = gridOf(1988, 38);
    std::erase_if(marks, [](const Mark& mark) { return mark.role == MarkRole::text; });
    marks.erase(marks.begin()); // the ground
    EXPECT_EQ(marks, expected);
    EXPECT_EQ(ofRole(marks, MarkRole::cell).size(), 108U);
}

TEST(LifeGrid, IsEmptyBeforeTheFirstComputation)
{
    const auto marks = lifeGridMarks({}, 4, 84, kWidth);
    EXPECT_THAT(ofRole(marks, MarkRole::cell), IsEmpty());
    EXPECT_EQ(marks.size(), 13U);
}

TEST(LifeGrid, HasNoCellOfNegativeWidth)
{
    for (const Mark& mark : gridOf(1988, 38, 10)) {
        EXPECT_GE(bounds(mark.shape).width, 0);
    }
}

TEST(LifeCell, IsAPaleBoxBeforeTheBirth)
{
    EXPECT_EQ(cellOf(1988, 38, 3),
        (std::vector<Mark>{{.shape = Box{{0, 0, 50, 40}, 4},
            .fills = {{SystemColor::gray, 0.05 * 0.08}},
            .role = MarkRole::cell,
            .name = "出生前"}}));
}

TEST(LifeCell, ShowsThePastYearsInSmallType)
{
    const auto marks = cellOf(1988, 38, 5);
    EXPECT_EQ(marks[0],
        (Mark{.shape = Box{{0, 0, 50, 40}, 4},
            .fills = {{SystemColor::orange, 0.35}},
            .role = MarkRole::cell,
            .name = "2 岁，已过",
            .help = "2 岁，已过"}));
    EXPECT_EQ(textsOf(marks), small("2"));
}

TEST(LifeCell, ShowsNoNumberOfAYearAhead)
{
    EXPECT_EQ(cellOf(1988, 38, 51),
        (std::vector<Mark>{{.shape = Box{{0, 0, 50, 40}, 4},
            .fills = {{SystemColor::gray, 0.08 * 0.25}},
            .role = MarkRole::cell,
            .name = "48 岁，未来",
            .help = "48 岁，未来"}}));
}

TEST(LifeCell, ShowsTheBirthAsZero)
{
    const auto marks = cellOf(1988, 38, 4);
    EXPECT_EQ(marks[0],
        (Mark{.shape = Box{{0, 0, 50, 40}, 4},
            .fills = {{SystemColor::blue, 0.4}},
            .stroke = Stroke{{SystemColor::blue}, 2.5},
            .role = MarkRole::cell,
            .name = "1 岁，出生，已过",
            .help = "1 岁，出生，已过"}));
    EXPECT_EQ(textsOf(marks), large("0", 16));
}

TEST(LifeCell, FadesAsAWholeAtAgeZero)
{
    const auto birth = cellOf(1988, 0, 4);
    EXPECT_EQ(birth[0].fills, (std::vector<Tint>{{SystemColor::blue, 0.4 * 0.25}}));
    EXPECT_EQ(birth[0].stroke, (Stroke{{SystemColor::blue, 0.25}, 2.5}));
    EXPECT_EQ(birth[0].name, "1 岁，出生，未来");
    EXPECT_EQ(textsOf(birth), large("0", 16, 0.25));
}

TEST(LifeCell, ShowsTheExpectedYears)
{
    const auto ahead = cellOf(1988, 38, 87);
    EXPECT_EQ(ahead[0].fills, (std::vector<Tint>{{SystemColor::red, 0.55}}));
    EXPECT_EQ(ahead[0].stroke, (Stroke{{SystemColor::red}, 2.5}));
    EXPECT_EQ(ahead[0].name, "84 岁，人均寿命，未来");
    EXPECT_EQ(textsOf(ahead), large("84", 16));
    EXPECT_EQ(textsOf(cellOf(1988, 90, 87)), large("84", 16) + small("84"));
}

TEST(LifeCell, ShowsThePresentYearLarge)
{
    const auto present = cellOf(1988, 38, 41);
    EXPECT_EQ(present[0].fills, (std::vector<Tint>{{SystemColor::orange, 0.35}}));
    EXPECT_EQ(present[0].name, "38 岁，现在");
    EXPECT_EQ(textsOf(present), large("38", 18));
}

TEST(LifeCell, LaysLargeNumbersOnEachOther)
{
    EXPECT_EQ(textsOf(cellOf(1988, 1, 4)), large("0", 16) + large("1", 18));
    EXPECT_EQ(cellOf(1988, 1, 4)[0].name, "1 岁，出生，现在");
    EXPECT_EQ(textsOf(cellOf(1988, 84, 87)), large("84", 16) + large("84", 18));
}

TEST(LifeCell, GlowsInThePresentYearsNumberAlone)
{
    const auto glowing = [](int age, std::size_t id) {
        const std::vector<Mark> cell = cellOf(1988, age, id);
        return cell.at(glowingNumber(cell)).texts.at(0).text;
    };
    EXPECT_EQ(glowing(1, 4), "1"); // not the "0" of the birth under it
    EXPECT_EQ(glowing(38, 41), "38");
    EXPECT_EQ(glowing(41, 44), "41"); // below the sign of somebody who is commemorated
}

TEST(LifeCell, MarksAGift)
{
    const auto ahead = cellOf(1988, 38, 88);
    EXPECT_EQ(ahead[0].fills, (std::vector<Tint>{{SystemColor::green, 0.15}}));
    EXPECT_EQ(ahead[0].name, "85 岁，恩赐");
    EXPECT_THAT(textsOf(ahead), IsEmpty());
    EXPECT_EQ(textsOf(cellOf(1988, 90, 88)), small("85"));
    EXPECT_EQ(cellOf(1988, 90, 88)[0].name, "85 岁，已过，恩赐");
}

TEST(LifeCell, CommemoratesTwelvePointsAboveItsMiddle)
{
    const char* const symbol = "person.crop.circle.fill";
    EXPECT_EQ(cellOf(1988, 38, 44).back().symbols,
        (std::vector<SymbolMark>{{{19, 20 - 12 - 6, 12, 12}, symbol, {kWhite, 0.6 * 0.25}},
            {{20, 20 - 12 - 5, 10, 10}, symbol, {kBlack, 0.25}}}));
    EXPECT_EQ(cellOf(1988, 50, 44).back().symbols.at(1).tint, Tint{kBlack});
    EXPECT_EQ(cellOf(1988, 50, 102).back().symbols.at(1).tint, Tint{SystemColor::blue});
    EXPECT_EQ(cellOf(1988, 50, 44)[0].name, "41 岁，已过，纪念");
}

} // namespace
} // namespace quillbrook
