#include "pages/figures/LocalCalendar.h"

#include "base/Utc8Day.h"
#include "base/Utc8Text.h"
#include "base/WholeNumber.h"

#include <cmath>

namespace quillbrook {

namespace {

/// How many of the computer's days lie between an instant's and the present one; no number for an
/// instant that no calendar has.
double daysAgo(Date date, const LocalCalendar& calendar)
{
    const auto dayOf = [&](double unixSeconds) {
        return isWithinWholeNumbers(unixSeconds)
            ? std::floor(
                (unixSeconds + calendar.secondsFromUtc(unixSeconds)) / static_cast<double>(kDaySec))
            : std::nan("");
    };
    return dayOf(calendar.now) - dayOf(date);
}

} // namespace

std::string dateLabel(Date startedAt, const LocalCalendar& calendar)
{
    const double days = daysAgo(startedAt, calendar);
    if (days == 0) {
        return "今天";
    }
    return days == 1 ? "昨天" : utc8SlashedDate(startedAt);
}

bool isToday(Date date, const LocalCalendar& calendar)
{
    return daysAgo(date, calendar) == 0;
}

} // namespace quillbrook
