#include "pages/figures/TimelineMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::ElementsAre;

const TextWidth kFivePoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 5; };

constexpr double kWidth = 84 + 760; // leaves the rows 760

std::vector<HourlyTimelineEntry> day()
{
    return {{.hour = 9,
        .total = 3600,
        .apps = {{.hour = 9, .appName = "Editor", .seconds = 1800},
            {.hour = 9, .appName = "Web", .seconds = 1800}}}};
}

std::vector<Mark> marksOf(
    const std::vector<HourlyTimelineEntry>& timeline, const TimelineHighlight& highlight = {})
{
    return timelineMarks(timeline, highlight, kWidth, kFivePoints);
}

std::vector<Mark> blocksOf(std::vector<Mark> marks)
{
    std::erase_if(marks, [](const Mark& mark) { return mark.role != MarkRole::mark; });
    return marks;
}

TEST(TimelineMarks, ReadAsHourBlocksAndMinutes)
{
    std::vector<std::string> names;
    for (const Mark& mark : marksOf(day())) {
        if (mark.role != MarkRole::none) {
            names.push_back(mark.name);
        }
    }
    EXPECT_THAT(names, ElementsAre("09:00", "Editor", "Web", "60m"));
}

TEST(TimelineMarks, DrawTheHourWithItsTickBeforeTheRow)
{
    const auto marks = marksOf(day());
    EXPECT_EQ(marks[0].texts[0],
        (TextLine{.place = {0, 0, 38, 44},
            .text = "09:00",
            .face = {TextFamily::monospaced, 10},
            .tint = secondaryTint(),
            .alignment = TextAlignment::trailing}));
    EXPECT_EQ(marks[1], lineMark({42, 22.5}, {50, 22.5}, secondaryTint(0.2)));
}

TEST(TimelineMarks, DrawABlockInTwoLayersOfItsColour)
{
    const Mark editor = blocksOf(marksOf(day()))[0];
    const Mark expected{.shape = Box{{51, 2, 360, 39}, 3},
        .fills = {{SystemColor::blue, 0.7}, {SystemColor::blue, 0.15}},
        .ground = InterfaceColor::windowBackground,
        .texts = {{.place = {55, 2, 352, 39},
            .text = "Editor (30min)",
            .face = {TextFamily::system, 9, TextWeight::medium},
            .tint = {kWhite},
            .isOnColor = true}},
        .role = MarkRole::mark,
        .name = "Editor",
        .value = "1800",
        .help = "Editor: 30min"};
    EXPECT_EQ(editor, expected);
    EXPECT_EQ(blocksOf(marksOf(day()))[1].fills[0], (Tint{SystemColor::green, 0.7}));
}

TEST(TimelineMarks, LeaveTheMinutesOutOfANarrowLabel)
{
    auto timeline = day();
    timeline[0].apps[0].seconds = 350; // 70 points wide, where the whole label takes 65
    EXPECT_EQ(blocksOf(marksOf(timeline))[0].texts[0].text, "Editor");
    timeline[0].apps[0].seconds = 370;
    EXPECT_EQ(blocksOf(marksOf(timeline))[0].texts[0].text, "Editor (6min)");
}

TEST(TimelineMarks, FadeFromOneHighlightToTheNext)
{
    const auto strengths = [](const TimelineHighlight& highlight) {
        std::vector<double> strengths;
        for (const Mark& block : blocksOf(marksOf(day(), highlight))) {
            strengths.push_back(block.fills[0].opacity);
        }
        return strengths;
    };
    EXPECT_THAT(strengths({.now = "Editor"}), ElementsAre(0.7, 0.7 * 0.2));
    EXPECT_THAT(strengths({.now = "Editor", .progress = 0}), ElementsAre(0.7, 0.7));
    EXPECT_THAT(strengths({.before = "Editor", .now = "Web", .progress = 0.5}),
        ElementsAre(testing::DoubleEq(0.7 * 0.6), testing::DoubleEq(0.7 * 0.6)));
    EXPECT_THAT(blocksOf(marksOf(day(), {.now = "Editor"}))[1].texts[0].tint.opacity, 1);
}

TEST(TimelineMarks, ShadeAnHourWithoutBlocks)
{
    const auto marks = marksOf({{.hour = 3, .total = 0}});
    EXPECT_EQ(marks[2], boxMark({50, 0, 760, 44}, secondaryTint(0.04)));
    EXPECT_EQ(marks.back(), lineMark({50, 57.5}, {810, 57.5}, secondaryTint(0.15)));
}

TEST(TimelineMarks, EndEachRowWithALineAndThePictureWithTheScale)
{
    const auto marks = marksOf(day());
    EXPECT_EQ(marks[4], lineMark({50, 43.5}, {810, 43.5}, {InterfaceColor::separator}));
    EXPECT_EQ(marks[5].texts[0],
        (TextLine{.place = {814, 0, 30, 44},
            .text = "60m",
            .face = {TextFamily::monospaced, 8},
            .tint = secondaryTint(0.5)}));
    EXPECT_EQ(timelineHeight(2), 2 * 44 + 15);
    EXPECT_EQ(timelineHeight(0), 0);
}

TEST(TimelineMarks, CutAFullHourOfManyApplicationsOffAtTheEndOfItsRow)
{
    HourlyTimelineEntry hour{.hour = 9, .total = 3600};
    for (int i = 0; i < 60; ++i) {
        hour.apps.push_back({.hour = 9, .appName = "App" + std::to_string(i), .seconds = 60});
    }
    const auto blocks = blocksOf(timelineMarks(std::vector{hour}, {}, 84 + 400, kFivePoints));
    ASSERT_EQ(blocks.size(), 60U);
    for (const Mark& block : blocks) {
        EXPECT_LE(right(bounds(block.shape)), 450);
        EXPECT_GE(bounds(block.shape).width, 0);
    }
    EXPECT_EQ(bounds(blocks.back().shape).width, 0);
}

} // namespace
} // namespace quillbrook
