#pragma once

#include "categories/RuleSet.h"
#include "platform/KernelFigures.h"
#include "report/ReportRecords.h"

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quillbrook {

// The queries behind the Today and Past pages. A failed one gives zeros and empty lists.

/// The figures of the sessions that a filter lets pass; the boot time is the present boot's, also
/// when another day is asked for.
TodayOverview queryTodayOverview(
    sqlite3* db, const std::string& dateFilter, const KernelFigures& kernelFigures);

/// The figures of the sessions and boots that a filter lets pass.
HistoryOverview queryHistoryOverview(sqlite3* db, const std::string& dateFilter);

/// The 20 applications with the most seconds, most first.
std::vector<AppUsage> queryAppUsage(
    sqlite3* db, const std::string& dateFilter, const RuleSet& rules);

/// The hours with activity, ascending, of the day that starts at `dayStartUTC` (seconds since
/// 1970). Only sessions that began on that day or later count, and none under 3 seconds.
std::vector<HourlyTimelineEntry> queryHourlyTimeline(sqlite3* db, std::int64_t dayStartUTC);

} // namespace quillbrook
