#include "shell/model/TodayStatements.h"

#include "base/Text.h"
#include "report/KeystrokeReports.h"

#include <string_view>

namespace quillbrook {

// Its list of names is shorter than that of the reports, on purpose as it stands.
constexpr std::string_view kActiveSecondsToday
    = R"(    SELECT COALESCE(SUM(duration_sec), 0) FROM app_sessions
    WHERE duration_sec IS NOT NULL
    AND datetime(started_at, 'unixepoch', '+8 hours') >= date('now', '+8 hours')
    AND app_name NOT IN ('loginwindow', 'WindowServer', 'kernel_task', 'launchd', 'Quillbrook')
    AND app_name NOT LIKE '%login%')";

constexpr std::string_view kAlertsToday = R"(    SELECT COUNT(*) FROM alerts
    WHERE datetime(timestamp, 'unixepoch', '+8 hours') >= date('now', '+8 hours'))";

std::string tokensTodaySql()
{
    return filled(R"(    SELECT COALESCE(SUM(
        CASE input_method
            WHEN 'shuangpin' THEN keystroke_count * {}
            WHEN 'english' THEN keystroke_count * {}
            ELSE keystroke_count * {}
        END
    ), 0) FROM keystrokes
    WHERE datetime(timestamp, 'unixepoch', '+8 hours') >= date('now', '+8 hours'))",
        {shortestText(tokenRate("shuangpin")), shortestText(tokenRate("english")),
            shortestText(tokenRate("other"))});
}

namespace {

/// Rows of the table from the first on, by id, that began today or in the second before, which
/// covers the rounding of the statements' own comparison. What is summed up must be finite, which a
/// product with 0 tells: a damaged store can hold infinities.
void narrow(sqlite3* connection, std::string_view table, std::string_view timeColumn,
    std::string_view summedColumn)
{
    // The plus leads the search along the index of times: without it the table is walked by id.
    const std::string sql = filled(R"(CREATE TEMP VIEW {} AS SELECT * FROM main.{}
    WHERE {} * 0 = 0 AND id >= (SELECT MIN(+id) FROM main.{}
        WHERE {} >= strftime('%s', date('now', '+8 hours')) - 28801))",
        {table, table, summedColumn, table, timeColumn});
    sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr);
}

} // namespace

void narrowToToday(sqlite3* connection)
{
    narrow(connection, "app_sessions", "started_at", "duration_sec");
    narrow(connection, "alerts", "timestamp", "timestamp");
    narrow(connection, "keystrokes", "timestamp", "keystroke_count");
}

} // namespace quillbrook
