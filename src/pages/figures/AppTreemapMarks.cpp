#include "pages/figures/AppTreemapMarks.h"

#include "pages/figures/TreemapLayout.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kFillOpacity = 0.65;
constexpr Stroke kBorder{{InterfaceColor::windowBackground, 0.5}, 1.5};
constexpr Stroke kOutline{{InterfaceColor::secondaryText, 0.2}, 1};
constexpr TextFace kNameFace{TextFamily::system, 10, TextWeight::semibold};
constexpr TextFace kTimeFace{TextFamily::system, 8};
constexpr double kTimeOpacity = 0.85;
constexpr double kLineGap = 2;
constexpr double kSideMargin = 4;
constexpr double kHeightMargin = 4; // above and below a text together

TextLine cellText(Rect place, std::string text, const TextFace& face, double opacity)
{
    return {.place = place,
        .text = std::move(text),
        .face = face,
        .tint = {kWhite, opacity},
        .alignment = TextAlignment::center,
        .isOnColor = true};
}

/// The name alone in a low cell, with the time under it in a higher one.
std::vector<TextLine> cellTexts(const Cell& cell)
{
    if (!hasRoomForName(cell.rect)) {
        return {};
    }
    const Rect inside = inset(cell.rect, kSideMargin, 0);
    if (!hasRoomForTime(cell.rect)) {
        return {cellText(inside, cell.app.appName, kNameFace, 1)};
    }
    const double room = cell.rect.height - kHeightMargin;
    const double nameHeight = std::min(lineHeight(kNameFace), room);
    const double timeHeight = std::min(lineHeight(kTimeFace), room);
    const double top = center(inside).y - (nameHeight + timeHeight + kLineGap) * 0.5;
    return {
        cellText({inside.x, top, inside.width, nameHeight}, cell.app.appName, kNameFace, 1),
        cellText({inside.x, top + nameHeight + kLineGap, inside.width, timeHeight},
            fmtMin(cell.app.totalSeconds), kTimeFace, kTimeOpacity),
    };
}

} // namespace

Mark treemapCell(const Rect& rect, Tint color)
{
    color.opacity = kFillOpacity;
    return {.shape = Box{rect},
        .fills = {color},
        .ground = InterfaceColor::windowBackground,
        .stroke = kBorder,
        .role = MarkRole::cell};
}

Mark treemapOutline(Size size)
{
    return {.shape = Box{{0, 0, size.width, size.height}, kTreemapRadius}, .stroke = kOutline};
}

std::vector<Mark> appTreemapMarks(std::span<const AppUsage> apps, Size size, const TextWidth&)
{
    std::vector<Mark> marks;
    for (const Cell& cell : computeCells(apps, size)) {
        Mark mark = treemapCell(cell.rect, {cell.color});
        mark.texts = cellTexts(cell);
        mark.name = cell.app.appName;
        mark.value = fmtMin(cell.app.totalSeconds);
        marks.push_back(std::move(mark));
    }
    marks.push_back(treemapOutline(size));
    return marks;
}

} // namespace quillbrook
