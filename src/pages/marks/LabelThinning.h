#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace quillbrook {

/// The stretch of an axis that a label takes, in points.
struct Extent {
    double start = 0;
    double end = 0;

    bool operator==(const Extent&) const = default;
};

/// The extent of a label of `length` in the middle over `point`, moved as little as needed to lie
/// from 0 to `most`, and cut to that length where it is longer.
Extent extentAround(double point, double length, double most);

/// The places of the labels that can stand side by side, ascending: the first one, and each later
/// one that keeps `gap` points from the last that stands. `labels` run along the axis, in
/// either direction.
std::vector<std::size_t> labelsThatFit(std::span<const Extent> labels, double gap);

} // namespace quillbrook
