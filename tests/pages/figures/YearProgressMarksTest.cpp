#include "pages/figures/YearProgressMarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quillbrook {
namespace {

constexpr double kBegin2026 = 1767225600;
constexpr double kDay = 86400;
constexpr double kWidth = 500;

double tenWide(std::string_view, const TextFace&)
{
    return 60;
}

std::vector<Mark> marksAt(double day, double width = kWidth)
{
    return yearProgressMarks({2026, kBegin2026 + day * kDay}, width, tenWide);
}

/// The white circle on the bar.
Circle markerAt(double day, double width = kWidth)
{
    const auto marks = marksAt(day, width);
    const auto marker = std::find_if(marks.begin(), marks.end(),
        [](const Mark& mark) { return mark.fills == std::vector<Tint>{{kWhite}}; });
    return std::get<Circle>(marker->shape);
}

TEST(YearProgressMarks, BeginWithThePercentageInItsColour)
{
    const auto marks = marksAt(72.5);
    EXPECT_EQ(marks[0].name, "当年进度");
    EXPECT_EQ(marks[0].texts[0].face, (TextFace{TextFamily::system, 13, TextWeight::bold}));
    const TextLine percent{.place = {440, 0, 60, 25},
        .text = "20.0%",
        .face = {TextFamily::system, 20, TextWeight::black},
        .tint = {yearProgressColor(0.2)},
        .alignment = TextAlignment::trailing};
    EXPECT_EQ(marks[1].name, "20.0%");
    EXPECT_EQ(marks[1].texts, edgedText(percent, {kWhite, 0.35}));
}

TEST(YearProgressMarks, EdgeThePercentageWhereADarkGroundWouldSwallowIt)
{
    const auto linear = [](int byte) {
        const double part = byte / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](Color color) {
        return 0.2126 * linear(color.red) + 0.7152 * linear(color.green)
            + 0.0722 * linear(color.blue);
    };
    const double dark = luminance({0x2A, 0x2A, 0x2C});
    for (int day = 0; day < 365; ++day) {
        const Mark percent = marksAt(day + 0.5)[1];
        const Color color = std::get<Color>(percent.texts.back().tint.color);
        const bool isReadable = (luminance(color) + 0.05) / (dark + 0.05) >= 3;
        EXPECT_TRUE(isReadable || percent.texts.size() > 1) << day;
    }
    EXPECT_EQ(marksAt(0.5)[1].texts.size(), 1U); // a bright green needs none
}

TEST(YearProgressMarks, DrawTheYearFromGreenToDarkRed)
{
    const Mark bar = marksAt(72.5)[2];
    EXPECT_EQ(bar.gradient,
        (std::vector<Tint>{{SystemColor::green}, {SystemColor::yellow}, {SystemColor::orange},
            {SystemColor::red}, {Color{115, 0, 0}}}));
    EXPECT_EQ(std::get<Box>(bar.shape).radius, 10);
    EXPECT_EQ(bounds(bar.shape).height, 20);
    EXPECT_EQ(bounds(bar.shape).width, kWidth);
    EXPECT_EQ(bar.role, MarkRole::mark);
    EXPECT_EQ(bar.name, "当年进度");
    EXPECT_EQ(bar.value, "0.2");
}

TEST(YearProgressMarks, KeepTheMarkerOnTheBar)
{
    EXPECT_EQ(markerAt(0.5).center.x, 14); // 1 / 365 of 500, less the radius
    EXPECT_DOUBLE_EQ(markerAt(72.5).center.x, 500 * 0.2 - 14);
    EXPECT_EQ(markerAt(364.5).center.x, 486);
    EXPECT_EQ(markerAt(400).center.x, 486); // a page that stayed open over the end of the year
    EXPECT_EQ(markerAt(364.5, 10).center.x, 14);
    EXPECT_EQ(markerAt(72.5).radius, 14);
    EXPECT_EQ(markerAt(72.5).center.y, center(bounds(marksAt(72.5)[2].shape)).y);
}

TEST(YearProgressMarks, DrawTheMarkerOverItsShadow)
{
    const auto marks = marksAt(72.5);
    EXPECT_EQ(std::get<Circle>(marks[6].shape).radius, 14);
    EXPECT_EQ(marks[6].fills, std::vector<Tint>{{kWhite}});
    EXPECT_EQ(marks[7].stroke, (Stroke{{kBlack, 0.25}, 1}));
    EXPECT_EQ(std::get<Circle>(marks[7].shape).radius, 13.5); // inside what is filled
    double shadow = 0;
    for (std::size_t ring = 3; ring < 6; ++ring) {
        ASSERT_EQ(marks[ring].fills.size(), 1U);
        EXPECT_EQ(std::get<Color>(marks[ring].fills[0].color), kBlack);
        shadow += marks[ring].fills[0].opacity;
        EXPECT_GT(std::get<Circle>(marks[ring].shape).radius, 14);
        EXPECT_EQ(marks[ring].role, MarkRole::none);
    }
    EXPECT_DOUBLE_EQ(shadow, 0.15);
}

TEST(YearProgressMarks, EndWithTheDays)
{
    const Mark caption = marksAt(72.5).back();
    EXPECT_EQ(caption.name, "73/365");
    EXPECT_EQ(caption.texts[0].face, (TextFace{TextFamily::system, 12}));
    EXPECT_EQ(caption.texts[0].tint, secondaryTint());
    EXPECT_EQ(bottom(bounds(caption.shape)), yearProgressHeight());
    const LifeMoment leapDay{2028, kBegin2026 + (730 + 59.5) * kDay};
    EXPECT_EQ(yearProgressMarks(leapDay, kWidth, tenWide).back().name, "60/366");
}

} // namespace
} // namespace quillbrook
