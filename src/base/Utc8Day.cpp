#include "base/Utc8Day.h"

#include "base/WholeNumber.h"

namespace quillbrook {

std::int64_t utc8DayNumber(double unixSeconds)
{
    return wholeNumber(
        (unixSeconds + static_cast<double>(kUtc8OffsetSec)) / static_cast<double>(kDaySec));
}

double utc8DayStart(std::int64_t dayNumber)
{
    return static_cast<double>(dayNumber) * static_cast<double>(kDaySec)
        - static_cast<double>(kUtc8OffsetSec);
}

} // namespace quillbrook
