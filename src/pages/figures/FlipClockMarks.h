#pragma once

#include "pages/marks/Mark.h"

#include <array>
#include <string>
#include <vector>

namespace quillbrook {

/// Stands among the digits of the clock for ":".
inline constexpr int kClockSeparator = -1;

/// What the clock shows from left to right: digits and separators.
using ClockItems = std::array<int, 8>;

/// The items at an instant, seconds since 1970, in a zone so many seconds ahead of UTC.
ClockItems clockItems(double unixSeconds, int zoneSeconds);

/// "09:59:59".
std::string clockText(const ClockItems& items);

/// The size of the whole clock.
Size flipClockSize();

/// The place of an item in it.
Rect clockItemRect(std::size_t place);

/// The ground of the clock, and the separators.
std::vector<Mark> flipClockMarks(const ClockItems& items);

/// A digit's tile, as large as its place.
std::vector<Mark> flipDigitMarks(int digit);

} // namespace quillbrook
