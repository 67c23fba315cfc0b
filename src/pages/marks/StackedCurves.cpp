#include "pages/marks/StackedCurves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace quillbrook {

namespace {

/// The heights of all edges at one place, from 0 up.
std::vector<double> heightsAt(
    std::span<const std::vector<double>> thicknesses, std::size_t place, double most)
{
    std::vector<double> heights{0};
    for (const std::vector<double>& area : thicknesses) {
        heights.push_back(heights.back() + area[place]);
    }
    if (heights.back() > most) {
        const double shrunk = most / heights.back();
        for (double& height : heights) {
            height = std::min(height * shrunk, most);
        }
    }
    return heights;
}

/// How fast a thickness may change at a place: it must still be at least 0 at the control points, a
/// third of the way to each neighbour.
struct Bounds {
    double least = 0;
    double most = 0;
};

Bounds boundsAt(const std::vector<double>& x, std::size_t place, double thickness)
{
    Bounds bounds{
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    if (place > 0) {
        bounds.most = 3 * thickness / (x[place] - x[place - 1]);
    }
    if (place + 1 < x.size()) {
        bounds.least = -3 * thickness / (x[place + 1] - x[place]);
    }
    // Rounding may leave the rest a trace below 0.
    bounds.most = std::max(bounds.most, 0.0);
    bounds.least = std::min(bounds.least, 0.0);
    return bounds;
}

/// Brings the changes of thickness at a place within their bounds, and together to 0 again: what
/// one area gains the others lose, as they fill the same height.
void holdBack(std::vector<double>& changes, const std::vector<Bounds>& bounds)
{
    double gain = 0;
    double loss = 0;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        changes[i] = std::clamp(changes[i], bounds[i].least, bounds[i].most);
        (changes[i] > 0 ? gain : loss) += std::abs(changes[i]);
    }
    const double common = std::min(gain, loss);
    for (double& change : changes) {
        const double whole = change > 0 ? gain : loss;
        change = whole > 0 ? change * (common / whole) : 0;
    }
}

std::vector<double> splineSlopes(const StackedCurves& curves, std::size_t edge)
{
    std::vector<Point> points;
    for (std::size_t place = 0; place < curves.x.size(); ++place) {
        points.push_back({curves.x[place], curves.heights[edge][place]});
    }
    return catmullRomSlopes(points);
}

/// The changes of all thicknesses at a place, with that of the rest up to `most` as the last.
void holdBackSlopes(StackedCurves& curves, std::size_t place, double most)
{
    const std::size_t edges = curves.heights.size();
    std::vector<double> changes;
    std::vector<Bounds> bounds;
    for (std::size_t edge = 0; edge < edges; ++edge) {
        const bool isTop = edge + 1 == edges;
        const double height = isTop ? most : curves.heights[edge + 1][place];
        const double slope = isTop ? 0 : curves.slopes[edge + 1][place];
        changes.push_back(slope - curves.slopes[edge][place]);
        bounds.push_back(boundsAt(curves.x, place, height - curves.heights[edge][place]));
    }
    holdBack(changes, bounds);
    for (std::size_t edge = 1; edge < edges; ++edge) {
        curves.slopes[edge][place] = curves.slopes[edge - 1][place] + changes[edge - 1];
    }
}

} // namespace

StackedCurves stackedCurves(
    std::vector<double> x, std::span<const std::vector<double>> thicknesses, double most)
{
    const std::size_t edges = thicknesses.size() + 1;
    StackedCurves curves{.x = std::move(x)};
    curves.heights.resize(edges);
    for (std::size_t place = 0; place < curves.x.size(); ++place) {
        const std::vector<double> heights = heightsAt(thicknesses, place, most);
        for (std::size_t edge = 0; edge < edges; ++edge) {
            curves.heights[edge].push_back(heights[edge]);
        }
    }
    for (std::size_t edge = 0; edge < edges; ++edge) {
        curves.slopes.push_back(splineSlopes(curves, edge));
    }
    for (std::size_t place = 0; place < curves.x.size(); ++place) {
        holdBackSlopes(curves, place, most);
    }
    return curves;
}

Curve curveOf(const StackedCurves& curves, std::size_t edge, std::size_t place, double base)
{
    const auto& heights = curves.heights[edge];
    const auto& slopes = curves.slopes[edge];
    const Point from{curves.x[place], base - heights[place]};
    const Point to{curves.x[place + 1], base - heights[place + 1]};
    return {from, curveBetween(from, -slopes[place], to, -slopes[place + 1])};
}

} // namespace quillbrook
