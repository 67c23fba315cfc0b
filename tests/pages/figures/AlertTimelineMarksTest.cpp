#include "pages/figures/AlertTimelineMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillbrook {
namespace {

using testing::ElementsAre;

const TextWidth kTenPoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 10; };

constexpr double kMidnight = 1767196800; // 2026-01-01 00:00 in UTC+8
constexpr double kWidth = 156 + 720; // leaves the axis 720 from 122 on

AlertTimelineRow swapAt(std::vector<Date> times)
{
    return {"high_swap", "critical", std::move(times)};
}

std::vector<Mark> marksOf(const std::vector<AlertTimelineRow>& rows)
{
    return alertTimelineMarks(rows, kWidth, kTenPoints);
}

std::vector<Mark> dotsOf(std::vector<Mark> marks)
{
    std::erase_if(marks, [](const Mark& mark) { return mark.role != MarkRole::mark; });
    return marks;
}

std::vector<std::string> spokenBehindTheHours(const std::vector<Mark>& marks)
{
    std::vector<std::string> names;
    for (const Mark& mark : marks) {
        if (mark.role != MarkRole::none) {
            names.push_back(mark.name);
        }
    }
    names.erase(names.begin(), names.begin() + 2 + 12);
    return names;
}

TEST(AlertTimelineMarks, BeginWithTheKindAndItsNumber)
{
    const auto marks = marksOf({{"ab", "critical", {kMidnight, kMidnight}}});
    EXPECT_EQ(marks[0], boxMark({24, 8, 828, 64}, {SystemColor::red, 0.025}, 8));
    EXPECT_EQ(marks[1],
        (Mark{.shape = Box{{52, 23, 36, 19}, 4},
            .fills = {{SystemColor::red, 0.12}},
            .texts = {{.place = {60, 26, 20, 13},
                .text = "ab",
                .face = {.pixels = 10, .weight = TextWeight::semibold},
                .tint = primaryTint(),
                .alignment = TextAlignment::center}},
            .role = MarkRole::text,
            .name = "ab"}));
    EXPECT_EQ(marks[2],
        textMark({.place = {34, 45, 72, 12},
            .text = "2 次",
            .face = {TextFamily::monospaced, 9},
            .tint = secondaryTint(),
            .alignment = TextAlignment::center}));
}

TEST(AlertTimelineMarks, KeepALongKindWithinItsColumn)
{
    const Mark kind = marksOf({{"windowserver_watchdog", "warning", {kMidnight}}})[1];
    EXPECT_EQ(bounds(kind.shape), (Rect{34, 23, 72, 19}));
    EXPECT_EQ(kind.texts[0].place, (Rect{42, 26, 56, 13}));
    EXPECT_EQ(kind.name, "windowserver_watchdog");
}

TEST(AlertTimelineMarks, DrawTheAxisWithTheEvenHours)
{
    const auto marks = marksOf({swapAt({kMidnight})});
    EXPECT_EQ(marks[3], boxMark({122, 39, 720, 2}, {SystemColor::red}, 1));
    EXPECT_EQ(marks[4], lineMark({122, 29.5}, {122, 34.5}, secondaryTint(0.3)));
    EXPECT_EQ(marks[5],
        textMark({.place = {112, 18, 20, 10},
            .text = "00",
            .face = {TextFamily::monospaced, 8},
            .tint = secondaryTint(),
            .alignment = TextAlignment::center}));
    EXPECT_EQ(marks[26], lineMark({782, 29.5}, {782, 34.5}, secondaryTint(0.3)));
    EXPECT_EQ(marks[27].name, "22");
}

TEST(AlertTimelineMarks, DrawADotAndItsTime)
{
    const auto marks = marksOf({swapAt({kMidnight + 6 * 3600 + 59})});
    ASSERT_EQ(marks.size(), 30u);
    const double x = 122 + 720 * (21659 / 86400.0);
    EXPECT_EQ(marks[28],
        (Mark{.shape = Circle{{x, 40}, 4.5},
            .fills = {{SystemColor::red}},
            .stroke = Stroke{{InterfaceColor::controlBackground}, 1.5},
            .role = MarkRole::mark,
            .name = "Swap 不足 06:00",
            .value = "0.25068287037037035",
            .help = "Swap 不足 06:00"}));
    EXPECT_EQ(marks[29],
        textMark({.place = {x - 16, 46.375, 32, 11.25},
            .text = "06:00",
            .face = {TextFamily::monospaced, 9},
            .tint = secondaryTint(),
            .alignment = TextAlignment::center}));
}

TEST(AlertTimelineMarks, KeepEveryDotAndThinTheTimes)
{
    // Ten minutes are 5 points here.
    std::vector<Date> times;
    for (int place = 0; place < 12; ++place) {
        times.push_back(kMidnight + place * 600);
    }
    const auto marks = marksOf({swapAt(times)});
    const auto dots = dotsOf(marks);
    EXPECT_EQ(dots.size(), 12u);
    EXPECT_TRUE(std::all_of(
        dots.begin(), dots.end(), [](const Mark& dot) { return dot.fills.size() == 1; }));
    const auto names = spokenBehindTheHours(marks);
    ASSERT_EQ(names.size(), 14u);
    EXPECT_EQ(names[1], "00:00");
    EXPECT_EQ(names[12], "Swap 不足 01:50");
    EXPECT_EQ(names[13], "01:50");
}

TEST(AlertTimelineMarks, PaintNoDotOnTopOfAnother)
{
    // A second is 1/120 of a point here: 239 of them are less than two points.
    const auto dots = dotsOf(marksOf(
        {swapAt({kMidnight, kMidnight, kMidnight + 239, kMidnight + 240, kMidnight + 300})}));
    std::vector<bool> arePainted;
    for (const Mark& dot : dots) {
        EXPECT_EQ(dot.role, MarkRole::mark);
        EXPECT_EQ(dot.stroke.has_value(), !dot.fills.empty());
        arePainted.push_back(!dot.fills.empty());
    }
    EXPECT_THAT(arePainted, ElementsAre(true, false, false, true, false));
}

TEST(AlertTimelineMarks, PaintTheDotsOfEveryYearThatShareADay)
{
    constexpr double kYear = 365 * 86400.0;
    const auto dots = dotsOf(marksOf({swapAt({kMidnight - kYear + 7200, kMidnight - kYear + 82800,
        kMidnight + 3600, kMidnight + 7000, kMidnight + 7300, kMidnight + 43200})}));
    std::vector<bool> arePainted;
    for (const Mark& dot : dots) {
        arePainted.push_back(!dot.fills.empty());
    }
    // Those of 01:56 and 02:01 lie under the older one of 02:00.
    EXPECT_THAT(arePainted, ElementsAre(true, true, true, false, false, true));
}

TEST(AlertTimelineMarks, DivideTwoRows)
{
    const auto marks = marksOf({swapAt({}), {"disk_full", "odd", {kMidnight}}});
    EXPECT_EQ(marks[28], lineMark({100, 80.5}, {kWidth, 80.5}, {InterfaceColor::separator}));
    EXPECT_EQ(marks[29], boxMark({24, 89, 828, 64}, {SystemColor::orange, 0.025}, 8));
    EXPECT_EQ(marks[30].name, "disk_full");
    EXPECT_EQ(dotsOf(marks)[0].name, "disk_full 00:00");
}

TEST(AlertTimelineMarks, AreAsHighAsTold)
{
    EXPECT_EQ(alertTimelineHeight(0), 0);
    EXPECT_EQ(alertTimelineHeight(1), 80);
    EXPECT_EQ(alertTimelineHeight(3), 242);
}

TEST(AlertTimelineMarks, StandNarrowPlaces)
{
    for (const Mark& mark : alertTimelineMarks(std::vector{swapAt({kMidnight})}, 10, kTenPoints)) {
        if (mark.role == MarkRole::mark) {
            EXPECT_EQ(bounds(mark.shape), (Rect{117.5, 35.5, 9, 9}));
        }
    }
}

} // namespace
} // namespace quillbrook
