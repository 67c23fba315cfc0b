#include "pages/figures/SliceLayout.h"

#include <cstddef>
#include <numeric>

namespace quillbrook {

namespace {

double sum(std::span<const double> weights)
{
    return std::accumulate(weights.begin(), weights.end(), 0.0);
}

/// Cuts a column of a share from the left of `free`.
Rect cutColumn(Rect& free, double share)
{
    const double width = share * free.width;
    const Rect column{free.x, free.y, width, free.height};
    free = {width + free.x, free.y, free.width - width, free.height};
    return column;
}

/// Cuts a band of a share from the top of `free`.
Rect cutBand(Rect& free, double share)
{
    const double height = share * free.height;
    const Rect band{free.x, free.y, free.width, height};
    free = {free.x, height + free.y, free.width, free.height - height};
    return band;
}

} // namespace

std::vector<Rect> sliceLayout(std::span<const double> weights, Size size)
{
    if (size.width <= 0 || size.height <= 0 || sum(weights) <= 0) {
        return {};
    }
    std::vector<Rect> rects;
    Rect free{0, 0, size.width, size.height};
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const double whole = sum(weights.subspan(i + 1)) + weights[i];
        // Weights of 0 at the end share an edge without area: each takes all of it.
        const double share = whole > 0 ? weights[i] / whole : 1;
        rects.push_back(i % 2 == 0 ? cutColumn(free, share) : cutBand(free, share));
    }
    return rects;
}

} // namespace quillbrook
