#include "base/Color.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(ColorFromHex, ReadsSixDigits)
{
    EXPECT_EQ(colorFromHex("#3B82F6"), (Color{0x3B, 0x82, 0xF6}));
    EXPECT_EQ(colorFromHex("3b82f6"), (Color{0x3B, 0x82, 0xF6}));
}

TEST(ColorFromHex, DoublesEachOfThreeDigits)
{
    EXPECT_EQ(colorFromHex("#F80"), (Color{0xFF, 0x88, 0x00}));
}

TEST(ColorFromHex, TrimsWhatIsNeitherLetterNorDigit)
{
    EXPECT_EQ(colorFromHex(" ##010203; "), (Color{1, 2, 3}));
}

TEST(ColorFromHex, IsBlackForAnyOtherLength)
{
    EXPECT_EQ(colorFromHex("#12345678"), Color{});
    EXPECT_EQ(colorFromHex("#1234"), Color{});
    EXPECT_EQ(colorFromHex(""), Color{});
}

TEST(ColorFromHex, StopsAtTheFirstSignThatIsNoDigit)
{
    EXPECT_EQ(colorFromHex("12xyz9"), (Color{0, 0, 0x12}));
    EXPECT_EQ(colorFromHex("xyz"), Color{});
}

} // namespace
} // namespace quillbrook
