#include "lab/ZoneOption.h"

#include "base/Utc8Day.h"

#include <cmath>

namespace quillbrook::lab {

int zoneSeconds(const Arguments& arguments)
{
    constexpr double kMost = 86400;
    const double seconds = arguments.number("--zone").value_or(static_cast<double>(kUtc8OffsetSec));
    if (seconds != std::floor(seconds) || std::abs(seconds) > kMost) {
        arguments.reject("--zone", "no offset of a zone in whole seconds");
    }
    return static_cast<int>(seconds);
}

} // namespace quillbrook::lab
