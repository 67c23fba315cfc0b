#include "pages/marks/LabelThinning.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr double kRounding = 1e-6; // labels exactly `gap` apart stand, however they were computed

bool isApart(const Extent& one, const Extent& other, double gap)
{
    return other.start - one.end >= gap - kRounding || one.start - other.end >= gap - kRounding;
}

} // namespace

Extent extentAround(double point, double length, double most)
{
    const double fitting = std::min(length, most);
    const double start = std::clamp(point - fitting / 2, 0.0, std::max(0.0, most - fitting));
    return {start, start + fitting};
}

std::vector<std::size_t> labelsThatFit(std::span<const Extent> labels, double gap)
{
    std::vector<std::size_t> fitting;
    for (std::size_t place = 0; place < labels.size(); ++place) {
        if (fitting.empty() || isApart(labels[fitting.back()], labels[place], gap)) {
            fitting.push_back(place);
        }
    }
    return fitting;
}

} // namespace quillbrook
