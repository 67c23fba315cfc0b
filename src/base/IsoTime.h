#pragma once

#include <string>

namespace quillbrook {

/// A civil date and time of day, of the Gregorian calendar.
struct CivilTime {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0; // cut off, never rounded
};

/// The civil time of an instant, seconds since 1970, in a zone so many seconds ahead of UTC.
/// Instants outside the years 0 to 9999 read as the nearest in; what is no number reads as 1970.
CivilTime civilTime(double unixSeconds, int zoneSeconds);

/// "2026-01-31T08:05:09Z": ISO 8601 in UTC, seconds cut off.
std::string isoTime(double unixSeconds);

/// "2026-03-01T09:30:12.345+08:00": ISO 8601 in a zone so many seconds ahead of UTC, milliseconds
/// cut off; "Z" stands for no difference.
std::string isoTimeInZone(double unixSeconds, int zoneSeconds);

} // namespace quillbrook
