#pragma once

#include "pages/figures/LifeFigures.h"
#include "pages/marks/Mark.h"

#include <vector>

namespace quillbrook {

double yearProgressHeight();

/// How far the current year is: its percentage, a bar from green to dark red with a marker on it,
/// and the days.
std::vector<Mark> yearProgressMarks(
    const LifeMoment& moment, double width, const TextWidth& textWidth);

} // namespace quillbrook
