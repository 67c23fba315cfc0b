#pragma once

#include <algorithm>
#include <compare>
#include <vector>

namespace quillbrook {

/// Periods that still run, then the ended ones, each newest first; equal beginnings keep their
/// order.
template <typename Period>
std::vector<Period> runningFirst(std::vector<Period> periods)
{
    std::ranges::stable_sort(periods, [](const Period& left, const Period& right) {
        return std::is_gt(std::weak_order(left.startedAt, right.startedAt));
    });
    std::stable_partition(periods.begin(), periods.end(),
        [](const Period& period) { return !period.endedAt.has_value(); });
    return periods;
}

} // namespace quillbrook
