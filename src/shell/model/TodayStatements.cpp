#include "shell/model/TodayStatements.h"

#include "base/Text.h"

#include <string_view>

namespace quillbrook {

const std::string kActiveSecondsToday
    = R"(    SELECT COALESCE(SUM(duration_sec), 0) FROM app_sessions
    WHERE duration_sec IS NOT NULL
    AND datetime(started_at, 'unixepoch', '+8 hours') >= date('now', '+8 hours')
    AND app_name NOT IN ('loginwindow', 'WindowServer', 'kernel_task', 'launchd', 'Quillbrook')
    AND app_name NOT LIKE '%login%')";

const std::string kAlertsToday = R"(    SELECT COUNT(*) FROM alerts
    WHERE datetime(timestamp, 'unixepoch', '+8 hours') >= date('now', '+8 hours'))";

const std::string kTokensToday = R"(    SELECT COALESCE(SUM(
        CASE input_method
            WHEN 'shuangpin' THEN keystroke_count * 0.267
            WHEN 'english' THEN keystroke_count * 0.248
            ELSE keystroke_count * 0.152
        END
    ), 0) FROM keystrokes
    WHERE datetime(timestamp, 'unixepoch', '+8 hours') >= date('now', '+8 hours'))";

namespace {

/// Rows of the table from the first on, by id, that began today or in the second before, which
/// covers the rounding of the statements' own comparison.
void narrow(sqlite3* connection, std::string_view table, std::string_view timeColumn)
{
    // The plus leads the search along the index of times: without it the table is walked by id.
    const std::string sql = filled(R"(CREATE TEMP VIEW {} AS SELECT * FROM main.{}
    WHERE id >= (SELECT MIN(+id) FROM main.{}
        WHERE {} >= strftime('%s', date('now', '+8 hours')) - 28801))",
        {table, table, table, timeColumn});
    sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr);
}

} // namespace

void narrowToToday(sqlite3* connection)
{
    narrow(connection, "app_sessions", "started_at");
    narrow(connection, "alerts", "timestamp");
    narrow(connection, "keystrokes", "timestamp");
}

} // namespace quillbrook
