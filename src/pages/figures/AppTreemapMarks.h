#pragma once

#include "pages/marks/Mark.h"
#include "report/ReportRecords.h"

#include <span>
#include <vector>

namespace quillbrook {

/// The treemap of applications: a cell for each in the order of `computeCells`, so that the mark at
/// a place is the cell at that place, and the outline around them at the end.
std::vector<Mark> appTreemapMarks(
    std::span<const AppUsage> apps, Size size, const TextWidth& width);

/// The round corners of the treemap.
constexpr double kTreemapRadius = 10;

/// What a cell of a treemap is filled and ringed with, of a colour that stands for something.
Mark treemapCell(const Rect& rect, Tint color);

/// The line around a treemap.
Mark treemapOutline(Size size);

} // namespace quillbrook
