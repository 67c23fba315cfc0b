#include "report/FocusSpread.h"

#include "base/Utc8Day.h"
#include "base/WholeNumber.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillbrook {

namespace {

constexpr double kHourSec = 3600;
constexpr double kFarthestSec = 1e15;
constexpr double kLongestWalkSec = 366 * 86400.0;

} // namespace

void FocusSpread::add(double startedAt, double endedAt)
{
    double cursor = startedAt + static_cast<double>(kUtc8OffsetSec);
    const double end = endedAt + static_cast<double>(kUtc8OffsetSec);
    if (!(cursor < end) || cursor < -kFarthestSec || end > kFarthestSec) {
        return;
    }
    const std::int64_t day = wholeNumber(cursor / static_cast<double>(kDaySec));
    // A damaged row can span ages; its whole days are added without walking through them.
    if (end - cursor > kLongestWalkSec) {
        const double days = std::floor((end - cursor) / static_cast<double>(kDaySec));
        addWholeDays(days, day);
        cursor += days * static_cast<double>(kDaySec);
    }
    while (cursor < end) {
        const std::int64_t index = wholeNumber(cursor / kHourSec);
        const double segmentEnd = std::min(end, static_cast<double>(index + 1) * kHourSec);
        addTo(index % 24, segmentEnd - cursor, day);
        cursor = segmentEnd;
    }
}

void FocusSpread::addWholeDays(double days, std::int64_t day)
{
    for (std::int64_t hour = 0; hour < 24; ++hour) {
        addTo(hour, days * kHourSec, day);
    }
}

void FocusSpread::addTo(std::int64_t hour, double seconds, std::int64_t day)
{
    if (hour < 0) {
        return; // before 1970, where no hour of the day is meant
    }
    Hour& entry = hoursOfDay[static_cast<std::size_t>(hour)];
    entry.seconds += seconds;
    if (entry.lastDay != day) { // starts ascend, and days with them
        ++entry.days;
        entry.lastDay = day;
    }
}

std::vector<FocusHour> FocusSpread::hours(std::int64_t lastHour) const
{
    std::vector<FocusHour> list;
    for (std::int64_t hour = 0; hour <= std::min<std::int64_t>(lastHour, 23); ++hour) {
        const Hour& entry = hoursOfDay[static_cast<std::size_t>(hour)];
        list.push_back({.hour = hour, .activeSec = entry.seconds, .activeDays = entry.days});
    }
    return list;
}

} // namespace quillbrook
