#include "pages/marks/Mark.h"

#include <algorithm>
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

Mark textMark(TextLine line)
{
    Mark mark{.shape = Box{line.place}, .role = MarkRole::text, .name = line.text};
    mark.texts.push_back(std::move(line));
    return mark;
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
