#include "pages/figures/TimelineMarks.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>

namespace quillbrook {

namespace {

constexpr double kLine = 44;
constexpr double kAxisWidth = 50;
constexpr double kTickWidth = 8;
constexpr double kBeforeTick = 4;
constexpr double kLabelPadding = 4;
constexpr double kLabelWidth = 20;
constexpr double kGapAtEnd = 10;
constexpr double kScaleDrop = 14; // how far the closing line lies below the last row
constexpr double kBlockInset = 2; // above and below a block, within its line
constexpr double kBlockPadding = 4;
constexpr TextFace kHourFace{TextFamily::monospaced, 10};
constexpr TextFace kDurationFace{TextFamily::monospaced, 8};
constexpr TextFace kBlockFace{TextFamily::system, 9, TextWeight::medium};

/// Where the blocks of a row lie.
Rect rowArea(std::size_t row, double width)
{
    const double behind = kLabelPadding + kLabelWidth + kGapAtEnd;
    return {kAxisWidth, static_cast<double>(row) * kLine,
        std::max(width - kAxisWidth - behind, 0.0), kLine};
}

/// A block's place, cut off at the end of its row: many short stays add up to more than the hour,
/// as each is at least a point wide.
Rect blockRect(const Rect& area, const HourBlock& block)
{
    const double from = std::min(block.x, area.width);
    const double to = std::min(block.x + block.width, area.width);
    return {area.x + from, area.y + kBlockInset, to - from, area.height - 2 * kBlockInset - 1};
}

double dimOf(const TimelineHighlight& highlight, const std::string& appName)
{
    return std::lerp(dimFactor(highlight.before, appName), dimFactor(highlight.now, appName),
        highlight.progress);
}

/// A block's label. Where it is too long the minutes go first, as the block's width tells them too.
TextLine labelOf(const HourBlock& block, const Rect& rect, const TextWidth& textWidth)
{
    const Rect inside = inset(rect, kBlockPadding, 0);
    const bool isRoom = textWidth(block.label, kBlockFace) <= inside.width;
    return {.place = inside,
        .text = isRoom ? block.label : block.appName,
        .face = kBlockFace,
        .tint = {kWhite},
        .isOnColor = true};
}

Mark blockMark(const HourBlock& block, const Rect& rect, double dim, const TextWidth& textWidth)
{
    Mark mark{.shape = Box{rect, block.radius},
        .fills = {{block.color, 0.7 * dim}, {block.color, 0.15 * dim}},
        .ground = InterfaceColor::windowBackground,
        .role = MarkRole::mark,
        .name = block.appName,
        .value = shortestText(block.seconds),
        .help = blockHelp(block)};
    if (!block.label.empty()) {
        mark.texts = {labelOf(block, rect, textWidth)};
    }
    return mark;
}

Mark hourMark(std::int64_t hour, const Rect& area)
{
    Mark mark = textMark({.place = {0, area.y, kAxisWidth - kTickWidth - kBeforeTick, area.height},
        .text = hourText(hour),
        .face = kHourFace,
        .tint = secondaryTint(),
        .alignment = TextAlignment::trailing});
    mark.shape = Box{{0, area.y, kAxisWidth, area.height}}; // with its tick
    return mark;
}

Mark durationMark(const std::string& label, const Rect& area)
{
    return textMark(
        {.place = {right(area) + kLabelPadding, area.y, kLabelWidth + kGapAtEnd, area.height},
            .text = label,
            .face = kDurationFace,
            .tint = secondaryTint(0.5)});
}

/// A level line over the width of `area`, of a point's height above `bottomEdge`.
Mark levelLine(const Rect& area, double bottomEdge, Tint tint)
{
    const double y = bottomEdge - 0.5;
    return lineMark({area.x, y}, {right(area), y}, tint);
}

} // namespace

double timelineHeight(std::size_t hours)
{
    return hours == 0 ? 0 : static_cast<double>(hours) * kLine + kScaleDrop + 1;
}

std::vector<Mark> timelineMarks(std::span<const HourlyTimelineEntry> timeline,
    const TimelineHighlight& highlight, double width, const TextWidth& textWidth)
{
    std::vector<Mark> marks;
    const AppColorMap colors = appColorMap(timeline);
    for (std::size_t row = 0; row < timeline.size(); ++row) {
        const Rect area = rowArea(row, width);
        marks.push_back(hourMark(timeline[row].hour, area));
        const double middle = center(area).y + 0.5;
        marks.push_back(
            lineMark({kAxisWidth - kTickWidth, middle}, {kAxisWidth, middle}, secondaryTint(0.2)));

        const std::vector<HourBlock> blocks = hourBlocks(timeline[row], colors, area.width);
        if (blocks.empty()) {
            marks.push_back(boxMark(area, secondaryTint(0.04)));
        }
        for (const HourBlock& block : blocks) {
            marks.push_back(blockMark(
                block, blockRect(area, block), dimOf(highlight, block.appName), textWidth));
        }
        marks.push_back(levelLine(area, bottom(area), {InterfaceColor::separator}));
        if (const std::string label = durationLabel(timeline[row].total); !label.empty()) {
            marks.push_back(durationMark(label, area));
        }
    }
    if (!timeline.empty()) {
        const Rect last = rowArea(timeline.size() - 1, width);
        marks.push_back(levelLine(last, bottom(last) + kScaleDrop, secondaryTint(0.15)));
    }
    return marks;
}

} // namespace quillbrook
