#include "pages/marks/Mark.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(Bounds, AreThePlaceOfEachShape)
{
    EXPECT_EQ(bounds(Shape(Box{{1, 2, 3, 4}, 2})), (Rect{1, 2, 3, 4}));
    EXPECT_EQ(bounds(Shape(StraightLine{{5, 9}, {2, 9}})), (Rect{2, 9, 3, 0}));
    EXPECT_EQ(bounds(Shape(Circle{{10, 20}, 4})), (Rect{6, 16, 8, 8}));
    EXPECT_EQ(bounds(Shape(Path{moveTo({3, 7}), lineTo({1, 9}), cubicTo({0, 8}, {4, 5}, {2, 6})})),
        (Rect{0, 5, 4, 4}));
    EXPECT_EQ(bounds(Shape(Path{})), Rect());
}

TEST(Contains, LeavesTheRightAndLowerEdgeToTheNeighbours)
{
    const Rect rect{10, 20, 30, 40};
    EXPECT_TRUE(contains(rect, {10, 20}));
    EXPECT_FALSE(contains(rect, {40, 30}));
    EXPECT_FALSE(contains(rect, {20, 60}));
    EXPECT_FALSE(contains(rect, {9.9, 30}));
}

TEST(Reach, HoldsAllThatIsPainted)
{
    EXPECT_EQ(reach({.shape = Box{{10, 20, 30, 40}}}), (Rect{8, 18, 34, 44}));
    EXPECT_EQ(reach({.shape = Box{{10, 20, 30, 40}}, .stroke = Stroke{{kBlack}, 3}}),
        (Rect{5, 15, 40, 50}));
    // Letters may be higher than their place.
    EXPECT_EQ(reach({.shape = Box{{10, 20, 30, 40}},
                  .texts = {{.place = {100, 30, 20, 4}, .face = {.pixels = 12}}}}),
        (Rect{8, 18, 124, 44}));
    EXPECT_EQ(reach({.shape = Box{{10, 20, 30, 40}}, .symbols = {{.place = {0, 0, 5, 90}}}}),
        (Rect{-2, -2, 44, 94}));
}

TEST(United, HoldsBoth)
{
    EXPECT_EQ(united({0, 0, 10, 10}, {5, 20, 2, 3}), (Rect{0, 0, 10, 23}));
    EXPECT_EQ(united({5, 20, 2, 3}, {0, 0, 10, 10}), (Rect{0, 0, 10, 23}));
    EXPECT_EQ(united({0, 0, 10, 10}, {2, 2, 3, 3}), (Rect{0, 0, 10, 10}));
}

TEST(TextMark, IsReadAsItIsDrawn)
{
    const Mark mark = textMark({.place = {1, 2, 30, 12}, .text = "09:00"});
    EXPECT_EQ(mark.role, MarkRole::text);
    EXPECT_EQ(mark.name, "09:00");
    EXPECT_EQ(bounds(mark.shape), (Rect{1, 2, 30, 12}));
    ASSERT_EQ(mark.texts.size(), 1U);
    EXPECT_EQ(mark.texts[0].text, "09:00");
}

TEST(EdgedText, StandsOnItsEdge)
{
    const TextLine line{.place = {10, 20, 30, 40}, .text = "9", .tint = {kWhite}};
    const auto lines = edgedText(line, {kBlack, 0.2});
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines.back(), line);
    EXPECT_EQ(lines[0], (TextLine{.place = {9, 20, 30, 40}, .text = "9", .tint = {kBlack, 0.2}}));
    EXPECT_EQ(lines[3].place, (Rect{10, 21, 30, 40}));
}

} // namespace
} // namespace quillbrook
