#pragma once

#include "pages/figures/TimelineFigures.h"
#include "pages/marks/Mark.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quillbrook {

/// Which application stands out of the timeline, on the way from one choice to the next.
struct TimelineHighlight {
    std::optional<std::string> before{};
    std::optional<std::string> now{};
    double progress = 1; // 0 to 1
};

/// A day as lines one under the other, one for each hour: its time, its blocks and its minutes.
std::vector<Mark> timelineMarks(std::span<const HourlyTimelineEntry> timeline,
    const TimelineHighlight& highlight, double width, const TextWidth& textWidth);

/// How high the picture of so many hours is; 0 for none.
double timelineHeight(std::size_t hours);

} // namespace quillbrook
