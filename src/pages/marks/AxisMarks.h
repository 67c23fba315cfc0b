#pragma once

#include "pages/marks/LegendMarks.h"
#include "pages/marks/Mark.h"
#include "pages/marks/Scale.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quillbrook {

/// A labelled number of an axis.
struct AxisMark {
    double at = 0; // within the domain
    std::string text{};

    bool operator==(const AxisMark&) const = default;
};

/// One direction of a chart: its domain and what is written along it.
struct Axis {
    double from = 0;
    double to = 1;
    std::vector<AxisMark> marks{}; // along the axis; none writes no labels
    bool hasGrid = false; // a line across the plot at each mark
    bool hasEvenLabels = false; // each takes the widest one's room: those that stay lie evenly
    double margin = 0; // of the plot before and after the domain, in units of the x axis
    std::string title{}; // empty for none

    bool operator==(const Axis&) const = default;
};

/// Numbers from 0 to `most`, automatically marked, with a grid.
Axis amountAxis(double most, std::string title = {});

/// An even place for each of `labels`: place i lies around the number i. Empty labels write
/// nothing.
Axis slotAxis(const std::vector<std::string>& labels, std::string title = {});

/// A mark for each day from `first` to `last`, days of UTC+8 counted from 1970-01-01, labelled with
/// month and day: "09/5". The domain runs from the first day to the last; a single day takes it
/// all.
Axis dayAxis(std::int64_t first, std::int64_t last);

/// The letters, tints and distances around a chart.
struct ChartLook {
    TextFace labels{.pixels = 9};
    TextFace titles{.pixels = 10};
    TextFace legend{.pixels = 10};
    Tint text = secondaryTint();
    Tint grid{InterfaceColor::separator};
    double gap = 4; // between the plot and its labels
    double labelGap = 3; // between labels
    double legendGap = 8; // above the legend
    double labelShare = 0.4; // of the width, at most, for the labels at the left

    bool operator==(const ChartLook&) const = default;
};

/// What stands around a plot. The y axis runs upwards at the left, its title above it; the x axis
/// below, its title in the middle under its labels; the legend at the very bottom, centred.
struct ChartAxes {
    Axis x{};
    Axis y{};
    std::vector<LegendEntry> legend{};
    ChartLook look{};
    double reserveRight = 0; // points at the right that the plot leaves free

    bool operator==(const ChartAxes&) const = default;
};

/// A chart without its data.
struct ChartFrame {
    Rect plot{};
    Scale x{};
    Scale y{};
    std::vector<Mark> behind{}; // the grid, then the labels at the left
    std::vector<Mark> around{}; // labels below, titles, legend

    bool operator==(const ChartFrame&) const = default;
};

/// Lays a chart of `size` out. No text is cut by the picture's edge or touches another of its axis:
/// labels without room are left out, the first one stays, and a text wider than its room is elided
/// and has its whole as help. Without room, the plot is one point wide
/// or has no height.
ChartFrame chartFrame(const ChartAxes& axes, Size size, const TextWidth& textWidth);

} // namespace quillbrook
