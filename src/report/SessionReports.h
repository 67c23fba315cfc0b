#pragma once

#include "report/Periods.h"
#include "report/ReportRecords.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

// The queries behind the Sessions, Idles and Focus pages. A failed one gives no rows.

/// The newest 200 sessions that a filter lets pass, running ones included, newest first.
std::vector<SessionDetail> queryRecentSessions(sqlite3* db, const std::string& filter);

/// The newest 200 idle periods that a filter lets pass, newest first.
std::vector<IdleRecord> queryRecentIdles(sqlite3* db, const std::string& filter);

/// The hours of the day from 0 on, each with the seconds of all sessions of the period in it; up to
/// the present hour for today. A session that crosses midnight counts as a day where it began.
std::vector<FocusHour> queryFocusHours(sqlite3* db, FocusPeriod period, double now);

/// How many sessions of the period have which length, from 10 seconds on, shortest first.
std::vector<DurationBucket> queryDurationBuckets(sqlite3* db, FocusPeriod period);

/// Mean session lengths of each day of the last seven 24-hour spans, ordered by "MM-dd", so that
/// January stands before December.
std::vector<DailyAvgSession> queryDailyAvgSessions(sqlite3* db);

/// The statement of `queryDailyAvgSessions`.
extern const std::string_view kDailyAvgSessionsSql;

} // namespace quillbrook
