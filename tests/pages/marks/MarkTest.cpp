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

TEST(TextMark, IsReadAsItIsDrawn)
{
    const Mark mark = textMark({.place = {1, 2, 30, 12}, .text = "09:00"});
    EXPECT_EQ(mark.role, MarkRole::text);
    EXPECT_EQ(mark.name, "09:00");
    EXPECT_EQ(bounds(mark.shape), (Rect{1, 2, 30, 12}));
    ASSERT_EQ(mark.texts.size(), 1U);
    EXPECT_EQ(mark.texts[0].text, "09:00");
}

} // namespace
} // namespace quillbrook
