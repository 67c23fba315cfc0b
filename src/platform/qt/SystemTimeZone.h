#pragma once

#include "platform/TimeZone.h"

#include <cmath>
#include <ctime>

namespace quillbrook {

/// The system's time zone.
class SystemTimeZone final : public TimeZone {
public:
    int secondsFromUtc(double unixSeconds) const override
    {
        const auto time = static_cast<std::time_t>(std::floor(unixSeconds));
        std::tm local{};
        return localtime_r(&time, &local) != nullptr ? static_cast<int>(local.tm_gmtoff) : 0;
    }
};

} // namespace quillbrook
