#include "pages/marks/Path.h"

#include <algorithm>

namespace quillbrook {

namespace {

struct Extent {
    Point least;
    Point most;

    void take(Point point)
    {
        least = {std::min(least.x, point.x), std::min(least.y, point.y)};
        most = {std::max(most.x, point.x), std::max(most.y, point.y)};
    }
};

} // namespace

Rect bounds(const Path& path)
{
    if (path.empty()) {
        return {};
    }
    Extent extent{path.front().to, path.front().to};
    for (const PathStep& step : path) {
        extent.take(step.to);
        if (step.kind == PathStep::Kind::cubic) {
            extent.take(step.control1);
            extent.take(step.control2);
        }
    }
    return {extent.least.x, extent.least.y, extent.most.x - extent.least.x,
        extent.most.y - extent.least.y};
}

} // namespace quillbrook
