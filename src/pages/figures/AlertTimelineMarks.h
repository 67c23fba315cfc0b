#pragma once

#include "pages/figures/AlertsFigures.h"
#include "pages/marks/Mark.h"

#include <cstddef>
#include <span>
#include <vector>

namespace quillbrook {

/// A day's kinds of alerts, one row under the other: the kind with its number, and an axis of 24
/// hours with a dot for each alert.
std::vector<Mark> alertTimelineMarks(
    std::span<const AlertTimelineRow> rows, double width, const TextWidth& textWidth);

/// How high the picture of so many rows is; 0 for none.
double alertTimelineHeight(std::size_t rows);

} // namespace quillbrook
