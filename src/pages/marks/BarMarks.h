#pragma once

#include "pages/marks/AxisMarks.h"
#include "pages/marks/Datum.h"

#include <string>
#include <vector>

namespace quillbrook {

/// An upright bar.
struct VerticalBar {
    double at = 0; // on the x axis; its bar stands around it
    double amount = 0; // on the y axis, cut off at its ends
    Tint tint{};
    Datum datum{};

    bool operator==(const VerticalBar&) const = default;
};

struct VerticalBarChart {
    ChartAxes axes{};
    std::vector<VerticalBar> bars{}; // in reading order
    double thickness = 0.7; // of one unit of the x axis

    bool operator==(const VerticalBarChart&) const = default;
};

/// The grid, the labels at the left, the bars, and what stands below. A bar of no amount has a box
/// of no height on the base line; one beyond the x axis is left out. Axes alone when there are no
/// bars.
std::vector<Mark> verticalBarMarks(
    const VerticalBarChart& chart, Size size, const TextWidth& textWidth);

/// A bar that lies.
struct HorizontalBar {
    std::string label{}; // at its left
    double amount = 0;
    std::string annotation{}; // behind its end; empty for none
    Tint tint{};
    Datum datum{};

    bool operator==(const HorizontalBar&) const = default;
};

struct HorizontalBarChart {
    std::vector<HorizontalBar> bars{}; // from the top
    Axis amounts{.from = 0, .to = 0}; // below; the longest bar ends its domain when it has none
    double thickness = 0.7; // of a bar's share of the height
    ChartLook look{};
    TextFace annotations{.family = TextFamily::monospaced, .pixels = 10};

    bool operator==(const HorizontalBarChart&) const = default;
};

/// The grid, the labels, each bar with its annotation after it, and what stands below. All
/// annotations lie in the picture: the plot ends before the widest of them has no room. Where rows
/// are lower than their text, labels and annotations are left out, the first ones stay.
std::vector<Mark> horizontalBarMarks(
    const HorizontalBarChart& chart, Size size, const TextWidth& textWidth);

} // namespace quillbrook
