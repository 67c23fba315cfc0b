#pragma once

#include "pages/marks/Datum.h"

#include <string>
#include <vector>

namespace quillbrook {

struct RingSector {
    double amount = 0; // counts as 0 when it is negative or no number
    std::string text{}; // drawn on it, in white; empty for none
    Tint tint{};
    Datum datum{};

    bool operator==(const RingSector&) const = default;
};

struct RingChart {
    std::vector<RingSector> sectors{}; // clockwise from the top
    double innerRatio = 0.55; // of the outer radius
    double angularInset
        = 2; // points between two sectors, the same from the inner edge to the outer
    TextFace face{.pixels = 10, .weight = TextWeight::bold};

    bool operator==(const RingChart&) const = default;
};

/// A mark for each sector, each followed by its text: the largest ring in the middle of `size`,
/// divided in proportion to the amounts. A sector of no amount is a path of one point; one that
/// has the whole ring has no gap. A sector narrower than twice the gap keeps half its width.
std::vector<Mark> ringMarks(const RingChart& chart, Size size);

} // namespace quillbrook
