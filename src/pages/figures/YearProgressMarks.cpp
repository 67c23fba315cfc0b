#include "pages/figures/YearProgressMarks.h"

#include "base/Text.h"

#include <algorithm>
#include <string>

namespace quillbrook {

namespace {

constexpr double kSpacing = 8;
constexpr TextFace kHeadFace{TextFamily::system, 13, TextWeight::bold};
constexpr TextFace kPercentFace{TextFamily::system, 20, TextWeight::black};
constexpr TextFace kCaptionFace{TextFamily::system, 12};
constexpr double kBarHeight = 20;
constexpr double kBarRadius = 10;
constexpr double kMarkerRadius = 14;
constexpr double kMarkerLine = 1;
constexpr double kMarkerDrop = 1; // of its shadow
constexpr double kShadowRings = 3;
constexpr double kBrightShare = 0.19; // up to here the green is bright enough in the dark
constexpr double kEdgeOpacity = 0.35; // of its light edge behind that
constexpr Color kDarkRed{115, 0, 0};

/// Where the bar lies. Above and below it is room for the marker, which is higher.
Rect barRect(double width)
{
    return {
        0, lineHeight(kPercentFace) + kSpacing + kMarkerRadius - kBarHeight / 2, width, kBarHeight};
}

double captionTop()
{
    return bottom(barRect(0)) + kMarkerRadius - kBarHeight / 2 + kSpacing;
}

double markerX(double share, double width)
{
    return std::max(std::min(width * share - kMarkerRadius, width - kMarkerRadius), kMarkerRadius);
}

Mark barMark(double share, double width)
{
    return {.shape = Box{barRect(width), kBarRadius},
        .gradient = {{SystemColor::green}, {SystemColor::yellow}, {SystemColor::orange},
            {SystemColor::red}, {kDarkRed}},
        .role = MarkRole::mark,
        .name = "当年进度",
        .value = shortestText(share),
        .help = lifePercent(share)};
}

void addMarker(std::vector<Mark>& marks, Point place)
{
    for (double ring = kShadowRings; ring > 0; --ring) {
        marks.push_back({.shape = Circle{{place.x, place.y + kMarkerDrop}, kMarkerRadius + ring},
            .fills = {{kBlack, 0.15 / kShadowRings}}});
    }
    marks.push_back({.shape = Circle{place, kMarkerRadius}, .fills = {{kWhite}}});
    // Inside the circle, as at its ends it touches the picture's edge.
    marks.push_back({.shape = Circle{place, kMarkerRadius - kMarkerLine / 2},
        .stroke = Stroke{{kBlack, 0.25}, kMarkerLine}});
}

} // namespace

double yearProgressHeight()
{
    return captionTop() + lineHeight(kCaptionFace);
}

std::vector<Mark> yearProgressMarks(
    const LifeMoment& moment, double width, const TextWidth& textWidth)
{
    const double progress = yearProgress(moment);
    const double share = std::clamp(progress, 0.0, 1.0);
    const std::string percent = lifePercent(progress);
    const double head = lineHeight(kPercentFace);
    const double percentWidth = textWidth(percent, kPercentFace);
    Mark percentMark = textMark({.place = {width - percentWidth, 0, percentWidth, head},
        .text = percent,
        .face = kPercentFace,
        .tint = {yearProgressColor(share)},
        .alignment = TextAlignment::trailing});
    if (share > kBrightShare) {
        percentMark.texts = edgedText(percentMark.texts[0], {kWhite, kEdgeOpacity});
    }
    std::vector<Mark> marks{
        textMark({.place = {0, 0, std::max(width - percentWidth - kSpacing, 0.0), head},
            .text = "当年进度",
            .face = kHeadFace}),
        percentMark, barMark(share, width)};
    addMarker(marks, {markerX(share, width), center(barRect(width)).y});
    const auto passed = daysPassedInYear(moment);
    marks.push_back(textMark({.place = {0, captionTop(), width, lineHeight(kCaptionFace)},
        .text = std::to_string(passed) + "/" + std::to_string(passed + daysRemainingInYear(moment)),
        .face = kCaptionFace,
        .tint = secondaryTint(),
        .alignment = TextAlignment::center}));
    return marks;
}

} // namespace quillbrook
