#pragma once

#include "pages/marks/Geometry.h"

#include <cstdint>
#include <vector>

namespace quillbrook {

/// A step of an outline: where the pen goes next.
struct PathStep {
    enum class Kind : std::uint8_t { move, line, cubic };

    Kind kind = Kind::move;
    Point to{};
    Point control1{}; // of a cubic curve alone
    Point control2{};

    bool operator==(const PathStep&) const = default;
};

/// An outline of straight lines and cubic curves. Filled, it closes by itself.
using Path = std::vector<PathStep>;

inline PathStep moveTo(Point to)
{
    return {.kind = PathStep::Kind::move, .to = to};
}

inline PathStep lineTo(Point to)
{
    return {.kind = PathStep::Kind::line, .to = to};
}

inline PathStep cubicTo(Point control1, Point control2, Point to)
{
    return {PathStep::Kind::cubic, to, control1, control2};
}

/// The smallest rectangle that holds all points and control points; empty for an empty path.
Rect bounds(const Path& path);

} // namespace quillbrook
