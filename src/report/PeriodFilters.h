#pragma once

#include "base/ConstantText.h"
#include "categories/SystemNames.h"
#include "report/Periods.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbrook {

/// When today starts, as seconds since 1970: an expression that the store works out at every query.
/// Today is the day of UTC+8, whatever zone the computer is in.
inline constexpr std::string_view dayStartSql
    = "(strftime('%s', datetime('now', '+8 hours', 'start of day')) - 28800)";

namespace exclusionSql {

inline constexpr std::string_view kEnd = ")";
inline constexpr std::string_view kNames = R"(
      AND app_name NOT IN ()";
inline constexpr std::string_view kPatterns = R"()
      AND app_name NOT LIKE '%login%'
      AND app_name NOT LIKE '%ScreenSaver%')";
inline constexpr std::string_view kAliasedNames = R"(
          AND s.app_name NOT IN ()";
inline constexpr std::string_view kAliasedPatterns = R"()
          AND s.app_name NOT LIKE '%login%'
          AND s.app_name NOT LIKE '%ScreenSaver%')";

} // namespace exclusionSql

/// Conditions that leave the system's own processes, and this program, out of usage figures. To
/// stand straight behind a filter. Which query carries which is part of what the figures mean:
/// the second has no patterns, the third speaks of a table named `s`.
inline constexpr std::string_view excludeSystemFull
    = joined<exclusionSql::kNames, kSystemNamesSql, exclusionSql::kPatterns>;
inline constexpr std::string_view excludeSystemNames
    = joined<exclusionSql::kNames, kSystemNamesSql, exclusionSql::kEnd>;
inline constexpr std::string_view excludeSystemAliased
    = joined<exclusionSql::kAliasedNames, kSystemNamesSql, exclusionSql::kAliasedPatterns>;

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
