#pragma once

#include "pages/figures/LifeFigures.h"
#include "pages/marks/Mark.h"

#include <cstddef>
#include <span>
#include <vector>

namespace quillbrook {

/// The height of the grid, whatever its width.
double lifeGridHeight();

/// The place of a cell in a grid of that width.
Rect lifeCellRect(int id, double width);

/// A year as it is drawn: first the cell, which is read, and then what lies on it.
std::vector<Mark> lifeCellMarks(const LifeCellInfo& info, const Rect& rect, int lifeExpectancyAge);

/// The place of the number that glows among the marks of the present year's cell: it lies on top of
/// any other.
std::size_t glowingNumber(std::span<const Mark> cell);

/// The grid with its headers. The current cell is read here and not drawn, as it moves: whoever
/// shows the grid lays it over the picture.
std::vector<Mark> lifeGridMarks(
    std::span<const LifeCellInfo> cells, int birthCol, int lifeExpectancyAge, double width);

} // namespace quillbrook
