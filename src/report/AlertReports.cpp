#include "report/AlertReports.h"

#include "base/Text.h"
#include "report/StoreQuery.h"

#include <string>

namespace quillbrook {

std::int64_t queryTodayAlertCount(sqlite3* db)
{
    StoreQuery query(db,
        "SELECT COUNT(*) c FROM alerts WHERE timestamp >= (strftime('%s', datetime('now', '+8 "
        "hours', 'start of day')) - 28800)");
    return query.next() ? query.integer(query.column("c")).value_or(0) : 0;
}

std::vector<AlertRecord> queryAlerts(sqlite3* db, std::int64_t days)
{
    StoreQuery query(db,
        filled(R"(    SELECT timestamp, alert_type, severity, message FROM alerts
    WHERE timestamp >= (strftime('%s', datetime('now', '+8 hours', 'start of day')) - 28800 - {})
    ORDER BY timestamp DESC)",
            {std::to_string(days * 86400)}));
    const int timestamp = query.column("timestamp");
    const int alertType = query.column("alert_type");
    const int severity = query.column("severity");
    const int message = query.column("message");
    std::vector<AlertRecord> alerts;
    while (query.next()) {
        const auto time = query.real(timestamp);
        auto type = query.text(alertType);
        auto itsSeverity = query.text(severity);
        auto text = query.text(message);
        if (time && type && itsSeverity && text) {
            alerts.push_back({.timestamp = *time,
                .alertType = *std::move(type),
                .severity = *std::move(itsSeverity),
                .message = *std::move(text)});
        }
    }
    return alerts;
}

} // namespace quillbrook
