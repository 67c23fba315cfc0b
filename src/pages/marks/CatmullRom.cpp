#include "pages/marks/CatmullRom.h"

#include <cmath>
#include <cstddef>

namespace quillbrook {

namespace {

Point between(Point one, Point other)
{
    return {(one.x + other.x) / 2, (one.y + other.y) / 2};
}

double chordSlope(Point from, Point to)
{
    return (to.y - from.y) / (to.x - from.x);
}

/// The spline's own parameter grows from one point to the next by their distance to the power of
/// alpha, here its root.
double knotInterval(Point from, Point to)
{
    return std::sqrt(std::hypot(to.x - from.x, to.y - from.y));
}

double slopeAt(Point before, Point here, Point after)
{
    const double first = knotInterval(before, here);
    const double second = knotInterval(here, after);
    const auto velocity = [&](double a, double b, double c) {
        return (b - a) / first - (c - a) / (first + second) + (c - b) / second;
    };
    return velocity(before.y, here.y, after.y) / velocity(before.x, here.x, after.x);
}

} // namespace

std::vector<double> catmullRomSlopes(std::span<const Point> points)
{
    std::vector<double> slopes(points.size(), 0);
    if (points.size() < 2) {
        return slopes;
    }
    const std::size_t last = points.size() - 1;
    slopes[0] = chordSlope(points[0], points[1]);
    slopes[last] = chordSlope(points[last - 1], points[last]);
    for (std::size_t i = 1; i < last; ++i) {
        slopes[i] = slopeAt(points[i - 1], points[i], points[i + 1]);
    }
    return slopes;
}

PathStep curveBetween(Point from, double slopeFrom, Point to, double slopeTo)
{
    const double third = (to.x - from.x) / 3;
    return cubicTo(
        {from.x + third, from.y + slopeFrom * third}, {to.x - third, to.y - slopeTo * third}, to);
}

std::pair<Curve, Curve> halvesOf(const Curve& curve)
{
    const Point a = between(curve.from, curve.step.control1);
    const Point b = between(curve.step.control1, curve.step.control2);
    const Point c = between(curve.step.control2, curve.step.to);
    const Point ab = between(a, b);
    const Point bc = between(b, c);
    const Point middle = between(ab, bc);
    return {{curve.from, cubicTo(a, ab, middle)}, {middle, cubicTo(bc, c, curve.step.to)}};
}

Curve reversed(const Curve& curve)
{
    return {curve.step.to, cubicTo(curve.step.control2, curve.step.control1, curve.from)};
}

} // namespace quillbrook
