#pragma once

#include "pages/marks/AxisMarks.h"
#include "pages/marks/Datum.h"

#include <string>
#include <vector>

namespace quillbrook {

struct LinePoint {
    double at = 0; // on the x axis
    double amount = 0; // on the y axis, cut off at its ends
    Datum datum{};

    bool operator==(const LinePoint&) const = default;
};

struct LineSeries {
    std::string label{}; // in the legend
    Tint tint{};
    std::vector<LinePoint> points{}; // ascending by `at`

    bool operator==(const LineSeries&) const = default;
};

/// The legend is made of the series; one in `axes` stands before it.
struct LineChart {
    ChartAxes axes{};
    std::vector<LineSeries> series{}; // a later one lies over the earlier
    double width = 2;

    bool operator==(const LineChart&) const = default;
};

/// The grid, the labels at the left, the lines with a dot at each point, for the eye alone; then a
/// mark around each point, series by series, which is wider than its dot so that it is easily
/// hit; then what stands below. Axes and legend alone when no series has a point.
std::vector<Mark> lineMarks(const LineChart& chart, Size size, const TextWidth& textWidth);

} // namespace quillbrook
