#pragma once

#include "pages/marks/AxisMarks.h"
#include "pages/marks/Datum.h"

#include <string>
#include <vector>

namespace quillbrook {

struct AreaPoint {
    double at = 0; // on the x axis
    double amount = 0; // thickness, by the y axis; negative and no number count as 0
    Datum datum{};

    bool operator==(const AreaPoint&) const = default;
};

struct AreaSeries {
    std::string label{}; // in the legend
    Tint tint{};
    std::vector<AreaPoint> points{}; // at most one for each place of the x axis, in reading order

    bool operator==(const AreaSeries&) const = default;
};

/// The legend is made of the series; one in `axes` stands before it. The y axis starts at 0.
struct AreaChart {
    ChartAxes axes{};
    std::vector<AreaSeries> series{}; // from the lowest up
    double opacity = 0.75;
    InterfaceColor ground = InterfaceColor::controlBackground; // what the chart lies on

    bool operator==(const AreaChart&) const = default;
};

/// The grid, the labels at the left, the areas for the eye alone, a mark for each point, and what
/// stands below.
///
/// The places are those of all points together, and the edges run from each to the next; where a
/// series has no point its area has no thickness, and it isn't painted between two such
/// places. Areas are painted from the highest down, each to the base line and opaque, so that at
/// their common edge one colour goes over into the other with nothing between. A point's mark is
/// its area's part from halfway to the place before to halfway to the next. A single place takes
/// one unit of the x axis. Axes and legend alone when no series has a point.
std::vector<Mark> areaMarks(const AreaChart& chart, Size size, const TextWidth& textWidth);

} // namespace quillbrook
