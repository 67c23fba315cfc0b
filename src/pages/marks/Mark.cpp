#include "pages/marks/Mark.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

Rect boundsOf(const Box& box)
{
    return box.rect;
}

Rect boundsOf(const StraightLine& line)
{
    return {std::min(line.from.x, line.to.x), std::min(line.from.y, line.to.y),
        std::abs(line.to.x - line.from.x), std::abs(line.to.y - line.from.y)};
}

Rect boundsOf(const Circle& circle)
{
    return {circle.center.x - circle.radius, circle.center.y - circle.radius, 2 * circle.radius,
        2 * circle.radius};
}

Rect boundsOf(const Path& path)
{
    return bounds(path);
}

} // namespace

Rect bounds(const Shape& shape)
{
    return std::visit([](const auto& each) { return boundsOf(each); }, shape);
}

Rect reach(const Mark& mark)
{
    constexpr double kEdge = 2; // rounding to device pixels, smooth edges
    const double stroke = mark.stroke ? mark.stroke->width : 0;
    Rect all = inset(bounds(mark.shape), -stroke - kEdge, -stroke - kEdge);
    for (const TextLine& line : mark.texts) {
        // Letters may stand out of a place that is low or narrow.
        all = united(all, inset(line.place, -line.face.pixels, -line.face.pixels));
    }
    for (const SymbolMark& symbol : mark.symbols) {
        all = united(all, inset(symbol.place, -kEdge, -kEdge));
    }
    return all;
}

Mark textMark(TextLine line)
{
    Mark mark{.shape = Box{line.place}, .role = MarkRole::text, .name = line.text};
    mark.texts.push_back(std::move(line));
    return mark;
}

std::vector<TextLine> edgedText(const TextLine& line, Tint edge)
{
    constexpr std::array kSteps = {Point{-1, 0}, Point{1, 0}, Point{0, -1}, Point{0, 1}};
    std::vector<TextLine> lines(kSteps.size() + 1, line);
    for (std::size_t i = 0; i < kSteps.size(); ++i) {
        lines[i].place.x += kSteps[i].x;
        lines[i].place.y += kSteps[i].y;
        lines[i].tint = edge;
    }
    return lines;
}

Mark lineMark(Point from, Point to, Tint tint, double width)
{
    return {.shape = StraightLine{from, to}, .stroke = Stroke{tint, width}};
}

Mark boxMark(Rect rect, Tint tint, double radius)
{
    return {.shape = Box{rect, radius}, .fills = {tint}};
}

} // namespace quillbrook
