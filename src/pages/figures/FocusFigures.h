#pragma once

#include "pages/marks/FigureContent.h"
#include "pages/marks/Mark.h"
#include "report/ReportRecords.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillbrook {

/// The seconds that an hour of the clock could hold: an hour for each day with activity in it.
double availableSec(const FocusHour& row);

/// The active share of an hour, 0 where nothing is available. Above 1 where more is recorded than
/// the hour can hold.
double activeRatio(const FocusHour& row);

/// The hours with at least one active day, in their order.
std::vector<FocusHour> activeHours(std::span<const FocusHour> focusHours);

/// Minutes over all active hours, cut off.
std::int64_t totalActive(std::span<const FocusHour> focusHours);
std::int64_t totalIdle(std::span<const FocusHour> focusHours);

/// The active share of all active hours together, 0 without any.
double overallRatio(std::span<const FocusHour> focusHours);

/// The hour with the highest ratio, idle ones included; the earliest of several, none of none.
std::optional<FocusHour> bestHour(std::span<const FocusHour> focusHours);

/// Where the axes of the two lower charts end.
double bucketYMax(std::span<const DurationBucket> buckets);
double dailyAvgYMax(std::span<const DailyAvgSession> days);

/// The four cards of the Focus page, from left to right.
std::array<FigureContent, 4> focusCards(std::span<const FocusHour> focusHours);

/// The active share of each hour of the day as bars, green from 80 % on.
std::vector<Mark> activeDistributionMarks(
    std::span<const FocusHour> focusHours, Size size, const TextWidth& textWidth);

/// The number of sessions of each length as bars.
std::vector<Mark> durationBucketMarks(
    std::span<const DurationBucket> buckets, Size size, const TextWidth& textWidth);

/// The mean lengths of short, middling and long sessions of each day as three lines.
std::vector<Mark> dailyAvgMarks(
    std::span<const DailyAvgSession> days, Size size, const TextWidth& textWidth);

} // namespace quillbrook
