#pragma once

#include <string>

namespace quillbrook {

// The dates and times that pages show are those of UTC+8, whatever zone the computer is in. All
// take an instant in seconds since 1970, earlier ones included, and cut its fraction off. Years
// beyond 0 to 9999 read as the nearest in, what is no number as 1970.

/// "HH:mm".
std::string utc8HourMinute(double unixSeconds);

/// "HH:mm:ss".
std::string utc8HourMinuteSecond(double unixSeconds);

/// "MM/dd", as lists show a date.
std::string utc8SlashedDate(double unixSeconds);

/// "MM-dd", by which days are grouped and charts are labelled.
std::string utc8DashedDate(double unixSeconds);

} // namespace quillbrook
