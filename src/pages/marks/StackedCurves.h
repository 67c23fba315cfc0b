#pragma once

#include "pages/marks/CatmullRom.h"

#include <cstddef>
#include <span>
#include <vector>

namespace quillbrook {

/// The edges between areas that are stacked on one another, as curves over the same x places.
struct StackedCurves {
    std::vector<double> x{}; // ascending
    std::vector<std::vector<double>> heights{}; // [edge][place]; edge 0 is the base line
    std::vector<std::vector<double>> slopes{}; // [edge][place], height by x

    bool operator==(const StackedCurves&) const = default;
};

/// Stacks `thicknesses` ([area][place], at least 0, the lowest area first) between 0 and `most`.
/// The area i lies between the edges i and i + 1, so that two neighbours share one curve.
///
/// An edge goes through its points at the slopes of a Catmull-Rom spline of alpha 0.5, held back
/// where it would come nearer to its neighbour than the edges may: no edge ever crosses
/// another, 0 or `most`, and where an area is 0 thick at both ends of a stretch its two edges are
/// the same curve there. A place where all areas together are thicker than `most` is shrunk to it.
StackedCurves stackedCurves(
    std::vector<double> x, std::span<const std::vector<double>> thicknesses, double most);

/// The curve of an edge from a place to the next, heights counted upwards from the y of `base`.
Curve curveOf(const StackedCurves& curves, std::size_t edge, std::size_t place, double base);

} // namespace quillbrook
