#include "pages/figures/VerticalTextMarks.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(VerticalTextMarks, AreAColumnForEachLineWithACharacterUnderTheOther)
{
    const std::vector<std::string> lines{"观自在", "墨川"};
    const auto marks = verticalTextMarks(lines);
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(marks[0].name, "观自在");
    EXPECT_EQ(marks[0].role, MarkRole::text);
    EXPECT_EQ(bounds(marks[0].shape), (Rect{0, 0, 16, 51}));
    EXPECT_EQ(bounds(marks[1].shape), (Rect{22, 0, 16, 34}));
    ASSERT_EQ(marks[1].texts.size(), 2U);
    EXPECT_EQ(marks[1].texts[1],
        (TextLine{.place = {22, 17, 16, 17},
            .text = "川",
            .face = {TextFamily::system, 14},
            .tint = secondaryTint(0.45),
            .alignment = TextAlignment::center}));
    EXPECT_EQ(verticalTextSize(lines), (Size{38, 51}));
}

} // namespace
} // namespace quillbrook
