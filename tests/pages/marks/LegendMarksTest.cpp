#include "pages/marks/LegendMarks.h"

#include "tests/pages/marks/PlainWidths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr TextFace kFace{.pixels = 10}; // 5 a letter, 12.5 a line

TEST(Legend, IsCentredInOneRow)
{
    // 8 + 4 + 10 = 22 and 8 + 4 + 20 = 32, 12 apart: 66 of 100.
    const std::vector<LegendEntry> entries{
        {"ab", {SystemColor::blue}}, {"cdef", {SystemColor::orange}}};
    const std::vector<Mark> marks
        = legendMarks(entries, kFace, secondaryTint(), {0, 40, 100, 12.5}, plainWidths());
    ASSERT_EQ(marks.size(), 4U);
    EXPECT_EQ(marks[0].shape, Shape(Circle{{21, 46.25}, 4}));
    EXPECT_THAT(marks[0].fills, ElementsAre(Tint{SystemColor::blue}));
    EXPECT_EQ(marks[0].role, MarkRole::none);
    EXPECT_EQ(bounds(marks[1].shape), (Rect{29, 40, 10, 12.5}));
    EXPECT_EQ(marks[2].shape, Shape(Circle{{55, 46.25}, 4}));
    EXPECT_EQ(bounds(marks[3].shape), (Rect{63, 40, 20, 12.5}));
    EXPECT_THAT(namesOf(marks, MarkRole::text), ElementsAre("ab", "cdef"));
}

TEST(Legend, TakesAsManyRowsAsItsWidthAsksFor)
{
    const std::vector<LegendEntry> entries{{"ab"}, {"cdef"}, {"gh"}};
    EXPECT_EQ(legendHeight(entries, kFace, 100, plainWidths(), 9), 12.5); // 22+12+32+12+22
    EXPECT_EQ(legendHeight(entries, kFace, 99, plainWidths(), 9), 27); // 2 between two rows
    EXPECT_EQ(legendHeight(entries, kFace, 99, plainWidths(), 1), 12.5);
    EXPECT_EQ(legendHeight({}, kFace, 99, plainWidths(), 9), 0);
}

TEST(Legend, LeavesOutWhatHasNoRoom)
{
    const std::vector<LegendEntry> entries{{"ab"}, {"cdef"}, {"gh"}};
    const auto marks
        = legendMarks(entries, kFace, secondaryTint(), {0, 0, 99, 12.5}, plainWidths());
    EXPECT_THAT(namesOf(marks, MarkRole::text), ElementsAre("ab", "cdef"));
    EXPECT_THAT(
        legendMarks(entries, kFace, secondaryTint(), {0, 0, 99, 5}, plainWidths()), IsEmpty());
}

TEST(Legend, LeavesALongEntryInThePicture)
{
    const std::vector<LegendEntry> entries{{std::string(200, 'x')}, {"ab"}};
    const auto marks = legendMarks(entries, kFace, secondaryTint(), {0, 0, 100, 40}, plainWidths());
    EXPECT_TRUE(isLegible(marks, {100, 40}));
    EXPECT_EQ(bounds(marks[1].shape), (Rect{12, 0, 88, 12.5}));
    EXPECT_EQ(marks[1].name, std::string(200, 'x'));
}

} // namespace
} // namespace quillbrook
