#include "lab/RecordJson.h"

namespace quillbrook::lab {

namespace {

QByteArray object(const TodayOverview& overview)
{
    return JsonObject()
        .add("bootTime", overview.bootTime)
        .add("firstActivity", overview.firstActivity)
        .add("lastActivity", overview.lastActivity)
        .add("activeAppCount", overview.activeAppCount)
        .add("totalActiveHours", overview.totalActiveHours)
        .add("sessionCount", overview.sessionCount)
        .add("appSwitchCount", overview.appSwitchCount)
        .add("avgSessionMinutes", overview.avgSessionMinutes)
        .add("longestSessionMinutes", overview.longestSessionMinutes)
        .text();
}

QByteArray object(const HistoryOverview& overview)
{
    return JsonObject()
        .add("totalActiveHours", overview.totalActiveHours)
        .add("activeAppCount", overview.activeAppCount)
        .add("appSwitchCount", overview.appSwitchCount)
        .add("bootCount", overview.bootCount)
        .text();
}

QByteArray object(const AppUsage& app)
{
    return JsonObject()
        .add("appName", app.appName)
        .add("bundleId", app.bundleId)
        .add("totalSeconds", app.totalSeconds)
        .add("sessionCount", app.sessionCount)
        .add("categoryLabel", app.categoryLabel)
        .text();
}

QByteArray object(const HourUsage& usage)
{
    return JsonObject()
        .add("hour", usage.hour)
        .add("appName", usage.appName)
        .add("seconds", usage.seconds)
        .text();
}

QByteArray object(const AlertRecord& alert)
{
    return JsonObject()
        .add("timestamp", alert.timestamp)
        .add("alertType", alert.alertType)
        .add("severity", alert.severity)
        .add("message", alert.message)
        .text();
}

QByteArray object(const KeylogHourly& hour)
{
    JsonObject apps;
    for (const auto& [name, app] : hour.apps) {
        apps.addText(name,
            JsonObject()
                .add("keystrokes", app.keystrokes)
                .add("inputMethod", app.inputMethod)
                .text());
    }
    return JsonObject()
        .add("hour", hour.hour)
        .add("keystrokes", hour.keystrokes)
        .add("tokens", hour.tokens)
        .add("sessionCount", hour.sessionCount)
        .add("durationSeconds", hour.durationSeconds)
        .addText("apps", apps.text())
        .text();
}

QByteArray object(const CategoryUsage& usage)
{
    return JsonObject()
        .add("category", usage.category)
        .add("label", usage.label)
        .add("totalSeconds", usage.totalSeconds)
        .add("sessionCount", usage.sessionCount)
        .add("appCount", usage.appCount)
        .add("pct", usage.pct)
        .text();
}

QByteArray object(const CategorySession& session)
{
    return JsonObject()
        .add("startTime", session.startTime)
        .add("endTime", session.endTime)
        .add("category", session.category)
        .add("label", session.label)
        .add("appName", session.appName)
        .add("durationSec", session.durationSec)
        .text();
}

QByteArray object(const CategoryTrendPoint& point)
{
    return JsonObject()
        .add("date", point.date)
        .add("category", point.category)
        .add("label", point.label)
        .add("hours", point.hours)
        .text();
}

QByteArray object(const SessionDetail& session)
{
    return JsonObject()
        .add("appName", session.appName)
        .add("bundleId", session.bundleId)
        .add("startedAt", session.startedAt)
        .add("endedAt", session.endedAt)
        .add("durationSec", session.durationSec)
        .add("closeType", session.closeType)
        .add("status", session.status)
        .text();
}

QByteArray object(const IdleRecord& idle)
{
    return JsonObject()
        .add("rowId", idle.rowId)
        .add("startedAt", idle.startedAt)
        .add("endedAt", idle.endedAt)
        .add("durationSec", idle.durationSec)
        .add("sourceType", idle.sourceType)
        .text();
}

QByteArray object(const FocusHour& hour)
{
    return JsonObject()
        .add("hour", hour.hour)
        .add("activeSec", hour.activeSec)
        .add("activeDays", hour.activeDays)
        .text();
}

QByteArray object(const DurationBucket& bucket)
{
    return JsonObject()
        .add("label", bucket.label)
        .add("rangeMin", bucket.rangeMin)
        .add("count", bucket.count)
        .text();
}

QByteArray object(const DailyAvgSession& day)
{
    return JsonObject()
        .add("date", day.date)
        .add("avgUnder5", day.avgUnder5)
        .add("avg5to10", day.avg5to10)
        .add("avgOver10", day.avgOver10)
        .text();
}

QByteArray object(const HourlyTimelineEntry& entry);

template <typename T>
QByteArray objects(const std::vector<T>& records)
{
    QByteArray list;
    for (const T& record : records) {
        list += (list.isEmpty() ? "" : ",") + object(record);
    }
    return "[" + list + "]";
}

template <typename T>
QByteArray objectOrNull(const std::optional<T>& record)
{
    return record ? object(*record) : "null";
}

QByteArray object(const HourlyTimelineEntry& entry)
{
    return JsonObject()
        .add("hour", entry.hour)
        .add("total", entry.total)
        .addText("apps", objects(entry.apps))
        .text();
}

} // namespace

JsonObject recordJson(const DashboardData& data)
{
    JsonObject record;
    record.addText("appUsage", objects(data.appUsage))
        .add("alertCount", data.alertCount)
        .addText("overview", objectOrNull(data.overview))
        .addText("historyOverview", objectOrNull(data.historyOverview))
        .addText("hourlyTimeline", objects(data.hourlyTimeline))
        .addText("alerts", objects(data.alerts))
        .addText("keylogHourly", objects(data.keylogHourly))
        .add("totalKeylogKeystrokes", data.totalKeylogKeystrokes)
        .add("totalKeylogTokens", data.totalKeylogTokens)
        .add("totalActiveKeylogMinutes", data.totalActiveKeylogMinutes)
        .add("tpm", data.tpm)
        .addText("categoryUsage", objects(data.categoryUsage))
        .addText("categorySessions", objects(data.categorySessions))
        .add("totalActiveSeconds", data.totalActiveSeconds)
        .addText("recentSessions", objects(data.recentSessions))
        .addText("recentIdles", objects(data.recentIdles))
        .addText("focusHours", objects(data.focusHours))
        .addText("durationBuckets", objects(data.durationBuckets))
        .addText("dailyAvgSessions", objects(data.dailyAvgSessions));
    return record;
}

QByteArray trendJson(const std::vector<CategoryTrendPoint>& trend)
{
    return objects(trend);
}

} // namespace quillbrook::lab
