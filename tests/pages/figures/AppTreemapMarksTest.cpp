#include "pages/figures/AppTreemapMarks.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

const TextWidth kSixPoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 6; };

std::vector<Mark> marksOf(const std::vector<AppUsage>& apps, Size size)
{
    return appTreemapMarks(apps, size, kSixPoints);
}

TEST(AppTreemapMarks, AreACellForEachApplicationAndAnOutline)
{
    const auto marks = marksOf(
        {{.appName = "Editor", .totalSeconds = 7500}, {.appName = "Web", .totalSeconds = 2500}},
        {400, 200});
    ASSERT_EQ(marks.size(), 3U);
    const Mark editor{.shape = Box{{0, 0, 300, 200}},
        .fills = {{SystemColor::blue, 0.65}},
        .ground = InterfaceColor::windowBackground,
        .stroke = Stroke{{InterfaceColor::windowBackground, 0.5}, 1.5},
        .texts = {{.place = {4, 87.75, 292, 12.5},
                      .text = "Editor",
                      .face = {TextFamily::system, 10, TextWeight::semibold},
                      .tint = {kWhite},
                      .alignment = TextAlignment::center,
                      .isOnColor = true},
            {.place = {4, 102.25, 292, 10},
                .text = "2h5m",
                .face = {TextFamily::system, 8},
                .tint = {kWhite, 0.85},
                .alignment = TextAlignment::center,
                .isOnColor = true}},
        .role = MarkRole::cell,
        .name = "Editor",
        .value = "2h5m"};
    EXPECT_EQ(marks[0], editor);
    EXPECT_EQ(marks[1].fills[0], (Tint{SystemColor::green, 0.65}));
    EXPECT_EQ(marks[1].name, "Web");
    EXPECT_EQ(marks[1].value, "41m");
    EXPECT_EQ(marks[2],
        (Mark{.shape = Box{{0, 0, 400, 200}, 10},
            .stroke = Stroke{{InterfaceColor::secondaryText, 0.2}, 1}}));
}

TEST(AppTreemapMarks, NameTheCellsThatAreLargeEnough)
{
    const auto texts = [](double width, double height) {
        return marksOf({{.appName = "Editor", .totalSeconds = 60}}, {width, height})[0]
            .texts.size();
    };
    EXPECT_EQ(texts(50, 100), 0U);
    EXPECT_EQ(texts(51, 18), 0U);
    EXPECT_EQ(texts(51, 19), 1U);
    EXPECT_EQ(texts(51, 32), 1U);
    EXPECT_EQ(texts(51, 33), 2U);
}

TEST(AppTreemapMarks, PutALoneNameInTheMiddle)
{
    const auto marks = marksOf({{.appName = "Editor", .totalSeconds = 60}}, {100, 30});
    EXPECT_EQ(center(marks[0].texts[0].place), (Point{50, 15}));
}

} // namespace
} // namespace quillbrook
