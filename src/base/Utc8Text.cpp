#include "base/Utc8Text.h"

#include "base/IsoTime.h"
#include "base/Utc8Day.h"

namespace quillbrook {

namespace {

CivilTime utc8Time(double unixSeconds)
{
    return civilTime(unixSeconds, static_cast<int>(kUtc8OffsetSec));
}

std::string twoDigits(int value)
{
    return (value < 10 ? "0" : "") + std::to_string(value);
}

} // namespace

std::string utc8HourMinute(double unixSeconds)
{
    const CivilTime time = utc8Time(unixSeconds);
    return twoDigits(time.hour) + ":" + twoDigits(time.minute);
}

std::string utc8HourMinuteSecond(double unixSeconds)
{
    return utc8HourMinute(unixSeconds) + ":" + twoDigits(utc8Time(unixSeconds).second);
}

std::string utc8SlashedDate(double unixSeconds)
{
    const CivilTime time = utc8Time(unixSeconds);
    return twoDigits(time.month) + "/" + twoDigits(time.day);
}

std::string utc8DashedDate(double unixSeconds)
{
    const CivilTime time = utc8Time(unixSeconds);
    return twoDigits(time.month) + "-" + twoDigits(time.day);
}

} // namespace quillbrook
