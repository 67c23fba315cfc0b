#pragma once

#include "report/ReportRecords.h"

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace quillbrook {

/// Spreads sessions over the 24 hours of the day of UTC+8.
class FocusSpread {
public:
    /// Adds a session (seconds since 1970). Sessions come in the order of their starts. One that
    /// ends no later than it begins adds nothing, nor does one at times so far off that a double
    /// can't tell hours apart.
    void add(double startedAt, double endedAt);

    /// The hours from 0 through `lastHour`.
    std::vector<FocusHour> hours(std::int64_t lastHour) const;

private:
    struct Hour {
        double seconds = 0;
        std::int64_t days = 0;
        std::int64_t lastDay = std::numeric_limits<std::int64_t>::min();
    };

    void addWholeDays(double days, std::int64_t day);
    void addTo(std::int64_t hour, double seconds, std::int64_t day);

    std::array<Hour, 24> hoursOfDay{};
};

} // namespace quillbrook
