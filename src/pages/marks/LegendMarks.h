#pragma once

#include "pages/marks/Mark.h"

#include <span>
#include <string>
#include <vector>

namespace quillbrook {

/// What a colour of a chart stands for.
struct LegendEntry {
    std::string text{};
    Tint tint{};

    bool operator==(const LegendEntry&) const = default;
};

/// How high the legend is in a picture of that width, in points; 0 without entries. No more than
/// `mostRows` rows are made of it.
double legendHeight(std::span<const LegendEntry> entries, const TextFace& face, double width,
    const TextWidth& textWidth, int mostRows);

/// The entries in their order, in as many centred rows as the width of `place` asks for, from its
/// upper edge on: a dot, for the eye alone, and the text. An entry wider than a row is elided;
/// what doesn't go into the height of `place` isn't drawn.
std::vector<Mark> legendMarks(std::span<const LegendEntry> entries, const TextFace& face,
    const Tint& tint, const Rect& place, const TextWidth& textWidth);

} // namespace quillbrook
