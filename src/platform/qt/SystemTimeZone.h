#pragma once

#include "platform/TimeZone.h"

#include <cmath>
#include <ctime>

namespace quillbrook {

/// The system's time zone, as it is now: people travel while the program runs.
class SystemTimeZone final : public TimeZone {
public:
    int secondsFromUtc(double unixSeconds) const override
    {
        const auto time = static_cast<std::time_t>(std::floor(unixSeconds));
        std::tm local{};
        tzset(); // else a zone that was changed since the first question would go unnoticed
        return localtime_r(&time, &local) != nullptr ? static_cast<int>(local.tm_gmtoff) : 0;
    }
};

} // namespace quillbrook
