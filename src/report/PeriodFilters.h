#pragma once

#include "report/Periods.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbrook {

/// When today starts, as seconds since 1970: an expression that the store works out at every query.
/// Today is the day of UTC+8, whatever zone the computer is in.
extern const std::string dayStartSql;

/// Conditions that leave the system's own processes, and this program, out of usage figures. To
/// stand straight behind a filter. Which query carries which is part of what the figures mean:
/// the second has no patterns, the third speaks of a table named `s`.
extern const std::string excludeSystemFull;
extern const std::string excludeSystemNames;
extern const std::string excludeSystemAliased;

/// The condition on `started_at` that cuts out a period. Days are whole days of UTC+8 back from the
/// start of today: "本周" is today and the seven days before.
std::string dateFilter(HistoryPeriod period);
std::string dateFilter(FocusPeriod period);
std::string dateFilter(HabitPeriod period);
std::string dateFilter(TodayPeriod period);

/// The same for lists of rows; `now` is the present moment, seconds since 1970. An idle period that
/// is still open shows under the hours however long ago it began, a session doesn't.
std::string dateFilter(SessionsPeriod period, double now);
std::string dateFilter(IdlesPeriod period, double now);

/// The condition on `timestamp`, which alone follows the computer's zone, `zoneSeconds` ahead of
/// UTC. West of Greenwich it is never true.
std::string dateFilter(KeylogPeriod period, int zoneSeconds);

/// The condition on the `timestamp` of keystrokes of a day of UTC+8.
std::string keystrokeFilter(TodayPeriod period);

/// A filter on `started_at` turned to `timestamp`, for boot events.
std::string bootFilter(std::string filter);

/// How many days of alerts a period has.
std::int64_t alertDays(AlertsPeriod period);

/// When the present day of UTC+8 starts, seconds since 1970.
double bjTodayStartUTC(double now);

/// The last hour of the day that a focus report has, 0 to 23: the present one for today.
std::int64_t maxHour(FocusPeriod period, double now);

} // namespace quillbrook
