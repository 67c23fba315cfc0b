#pragma once

#include <cstdint>

namespace quillbrook {

/// The program's day is the day of UTC+8, whatever zone the computer is in.
constexpr std::int64_t kUtc8OffsetSec = 28800;
constexpr std::int64_t kDaySec = 86400;

/// The number of the day of UTC+8 in which an instant (seconds since 1970) lies, counted from
/// 1970-01-01. Cut towards 0, so that the day before 1970 counts as day 0 too.
std::int64_t utc8DayNumber(double unixSeconds);

/// When the day of that number starts, seconds since 1970.
double utc8DayStart(std::int64_t dayNumber);

} // namespace quillbrook
