#include "pages/figures/FlipClockMarks.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

constexpr double kMidnight = 1767225600; // in UTC

TEST(FlipClock, ShowsTheLocalTimeIn24Hours)
{
    EXPECT_EQ(clockItems(kMidnight, 0), (ClockItems{0, 0, -1, 0, 0, -1, 0, 0}));
    EXPECT_EQ(clockText(clockItems(kMidnight, 0)), "00:00:00");
    EXPECT_EQ(clockText(clockItems(kMidnight - 1, 0)), "23:59:59");
    EXPECT_EQ(clockText(clockItems(kMidnight + 0.999, 28800)), "08:00:00");
    EXPECT_EQ(
        clockItems(kMidnight + 13 * 3600 + 5 * 60 + 9, 0), (ClockItems{1, 3, -1, 0, 5, -1, 0, 9}));
}

TEST(FlipClock, ChangesFiveTilesAtTenOClock)
{
    const ClockItems before = clockItems(kMidnight + 10 * 3600 - 1, 0);
    const ClockItems after = clockItems(kMidnight + 10 * 3600, 0);
    EXPECT_EQ(clockText(before), "09:59:59");
    int changed = 0;
    for (std::size_t place = 0; place < before.size(); ++place) {
        changed += before[place] != after[place] ? 1 : 0;
    }
    EXPECT_EQ(changed, 6); // the tens and the units of the hour, and four zeros
}

TEST(FlipClock, LaysTheItemsOutInARow)
{
    EXPECT_EQ(flipClockSize(), (Size{220, 6 + 33 + 6}));
    for (std::size_t place = 1; place < 8; ++place) {
        EXPECT_EQ(clockItemRect(place).x, right(clockItemRect(place - 1)) + 2);
    }
    EXPECT_EQ(clockItemRect(0).width, 20);
    EXPECT_EQ(clockItemRect(0).height, 25 + 8);
    EXPECT_LT(clockItemRect(2).width, 20);
    // In the middle of the clock's width.
    EXPECT_EQ(clockItemRect(0).x, 220 - right(clockItemRect(7)));
}

TEST(FlipClock, StandsOnAGroundThatFitsItsContent)
{
    const auto marks = flipClockMarks(clockItems(kMidnight, 0));
    ASSERT_EQ(marks.size(), 3U);
    const Rect ground{
        clockItemRect(0).x - 10, 0, right(clockItemRect(7)) - clockItemRect(0).x + 20, 45};
    EXPECT_EQ(marks[0], boxMark(ground, {InterfaceColor::controlBackground}, 8));
    for (const std::size_t separator : {1U, 2U}) {
        EXPECT_EQ(marks[separator],
            textMark({.place = clockItemRect(separator == 1 ? 2 : 5),
                .text = ":",
                .face = {TextFamily::system, 20, TextWeight::bold},
                .tint = secondaryTint(),
                .alignment = TextAlignment::center}));
    }
}

TEST(FlipClock, DrawsADigitOnATile)
{
    const Rect tile{0, 0, 20, 33};
    EXPECT_EQ(flipDigitMarks(7),
        (std::vector<Mark>{{.shape = Box{tile, 4},
            .fills = {{InterfaceColor::controlBackground}},
            .stroke = Stroke{secondaryTint(0.3), 0.5},
            .texts = {{.place = tile,
                .text = "7",
                .face = {TextFamily::system, 20, TextWeight::bold},
                .alignment = TextAlignment::center}}}}));
}

} // namespace
} // namespace quillbrook
