#pragma once

#include "report/ReportRecords.h"

#include <sqlite3.h>

#include <cstdint>
#include <vector>

namespace quillbrook {

/// How many alerts there were since the start of today; 0 when the query fails.
std::int64_t queryTodayAlertCount(sqlite3* db);

/// All alerts of today and `days` days before, newest first; none when the query fails.
std::vector<AlertRecord> queryAlerts(sqlite3* db, std::int64_t days);

} // namespace quillbrook
