#include "base/IsoTime.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quillbrook {

CivilTime civilTime(double unixSeconds, int zoneSeconds)
{
    constexpr double kEarliest = -62167219200.0;
    constexpr double kLatest = 253402300799.999;
    const double inZone = std::isnan(unixSeconds) ? 0 : unixSeconds + zoneSeconds;
    const double bounded = std::clamp(inZone, kEarliest, kLatest);
    const double wholeSeconds = std::floor(bounded);
    const std::chrono::sys_seconds time{
        std::chrono::seconds(static_cast<std::int64_t>(wholeSeconds))};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clockTime{time - day};
    return {.year = static_cast<int>(date.year()),
        .month = static_cast<int>(static_cast<unsigned>(date.month())),
        .day = static_cast<int>(static_cast<unsigned>(date.day())),
        .hour = static_cast<int>(clockTime.hours().count()),
        .minute = static_cast<int>(clockTime.minutes().count()),
        .second = static_cast<int>(clockTime.seconds().count()),
        .millisecond = static_cast<int>((bounded - wholeSeconds) * 1000)};
}

std::string isoTime(double unixSeconds)
{
    const CivilTime time = civilTime(unixSeconds, 0);
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", time.year, time.month,
        time.day, time.hour, time.minute, time.second);
    return text.data();
}

std::string isoTimeInZone(double unixSeconds, int zoneSeconds)
{
    const CivilTime time = civilTime(unixSeconds, zoneSeconds);
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03d", time.year,
        time.month, time.day, time.hour, time.minute, time.second, time.millisecond);
    if (zoneSeconds == 0) {
        return std::string(text.data()) + "Z";
    }
    const int minutes = std::abs(zoneSeconds) / 60;
    std::array<char, 48> zone{};
    std::snprintf(zone.data(), zone.size(), "%c%02d:%02d", zoneSeconds < 0 ? '-' : '+',
        minutes / 60, minutes % 60);
    return std::string(text.data()) + zone.data();
}

} // namespace quillbrook
