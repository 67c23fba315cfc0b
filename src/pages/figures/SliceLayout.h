#pragma once

#include "pages/marks/Geometry.h"

#include <span>
#include <vector>

namespace quillbrook {

/// Divides `size` among `weights` (at least 0, in drawing order) with areas in proportion.
///
/// The first takes a column at the left, the second a band across the top of what is left, and so
/// on in turn; what comes last takes all that remains. One rectangle for each weight, without
/// area for a weight of 0 that isn't the only one left. Empty when `size` has no area or the
/// weights add up to 0.
std::vector<Rect> sliceLayout(std::span<const double> weights, Size size);

} // namespace quillbrook
