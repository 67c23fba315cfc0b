#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace quillbrook {

/// The menu bar's three figures of today, the day of UTC+8.
extern const std::string_view kActiveSecondsToday;
extern const std::string_view kAlertsToday;
std::string tokensTodaySql();

/// Puts temporary views in front of the tables that the statements read, on this connection alone,
/// so that they no longer walk through all of history for the rows of one day. The views hold at
/// least the rows of today, in the order of the table, so that sums come out the same to the last
/// bit. Where a view can't be made the statement reads the whole table.
void narrowToToday(sqlite3* connection);

} // namespace quillbrook
