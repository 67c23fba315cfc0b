#pragma once

#include "report/ReportRecords.h"

#include <functional>
#include <string>

namespace quillbrook {

/// The computer's own calendar at a moment.
struct LocalCalendar {
    double now = 0;
    std::function<int(double unixSeconds)> secondsFromUtc{}; // of its zone at an instant
};

/// "今天" or "昨天" by the computer's calendar, else "MM/dd" in UTC+8: on a computer in another
/// zone a row can lie in another day than in the reports.
std::string dateLabel(Date startedAt, const LocalCalendar& calendar);

/// Whether an instant lies in today by the computer's calendar.
bool isToday(Date date, const LocalCalendar& calendar);

} // namespace quillbrook
