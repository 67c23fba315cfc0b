#pragma once

#include "pages/marks/Path.h"

#include <span>
#include <utility>
#include <vector>

namespace quillbrook {

/// The slopes (y by x) at which a Catmull-Rom spline of alpha 0.5 goes through `points`, which
/// ascend by x. The first and the last are those of the chords there; one point alone has slope 0.
std::vector<double> catmullRomSlopes(std::span<const Point> points);

/// The cubic curve that leaves `from` at one slope and reaches `to` at another. Its control points
/// lie at thirds of the way, so that x grows evenly along it: halfway through the curve
/// is halfway in x.
PathStep curveBetween(Point from, double slopeFrom, Point to, double slopeTo);

/// A curve and where it starts.
struct Curve {
    Point from{};
    PathStep step{};

    bool operator==(const Curve&) const = default;
};

/// The two halves of a cubic curve, which together run just as it does.
std::pair<Curve, Curve> halvesOf(const Curve& curve);

/// The same curve, run the other way.
Curve reversed(const Curve& curve);

} // namespace quillbrook
