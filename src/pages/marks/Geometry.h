#pragma once

namespace quillbrook {

/// Device-independent pixels, as everywhere in the pages.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

struct Point {
    double x = 0;
    double y = 0; // downwards

    bool operator==(const Point&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0; // downwards
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

constexpr double right(const Rect& rect)
{
    return rect.x + rect.width;
}

constexpr double bottom(const Rect& rect)
{
    return rect.y + rect.height;
}

constexpr Point center(const Rect& rect)
{
    return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

/// Whether `point` lies in `rect`; its right and lower edges belong to the neighbours.
constexpr bool contains(const Rect& rect, Point point)
{
    return point.x >= rect.x && point.x < right(rect) && point.y >= rect.y
        && point.y < bottom(rect);
}

/// The smallest rectangle that holds both.
constexpr Rect united(const Rect& a, const Rect& b)
{
    const double x = a.x < b.x ? a.x : b.x;
    const double y = a.y < b.y ? a.y : b.y;
    const double end = right(a) > right(b) ? right(a) : right(b);
    const double low = bottom(a) > bottom(b) ? bottom(a) : bottom(b);
    return {x, y, end - x, low - y};
}

/// `rect` without a border of `x` at its sides and `y` above and below.
constexpr Rect inset(const Rect& rect, double x, double y)
{
    return {rect.x + x, rect.y + y, rect.width - 2 * x, rect.height - 2 * y};
}

} // namespace quillbrook
