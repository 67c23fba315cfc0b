#include "report/UsageQueries.h"

#include "base/Text.h"
#include "categories/CategoryStore.h"
#include "report/PeriodFilters.h"
#include "report/StoreQuery.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace quillbrook {

namespace {

/// The longest session's seconds. It leaves out fewer applications than the other figures: one with
/// "login" in its name can be the longest without being counted anywhere else.
double longestSessionSec(sqlite3* db, const std::string& dateFilter)
{
    StoreQuery query(db,
        filled(R"(    SELECT COALESCE(MAX(duration_sec), 0) mx
    FROM app_sessions WHERE duration_sec IS NOT NULL
      AND {}{})",
            {dateFilter, excludeSystemNames}));
    // Without sessions the store answers with an integer, which is no double, and both are 0.
    return query.next() ? query.seconds(query.column("mx")).value_or(0) : 0;
}

std::int64_t bootCount(sqlite3* db, const std::string& dateFilter)
{
    StoreQuery query(db,
        filled(R"(    SELECT COUNT(DISTINCT boot_time) bc FROM boot_events
    WHERE {})",
            {bootFilter(dateFilter)}));
    // A count that can't be had is 1, as the machine must have been booted; a count of 0 stays.
    return query.next() ? query.integer(query.column("bc")).value_or(1) : 1;
}

/// The seconds of a timeline row. A full hour in the middle of a session is made of whole numbers
/// alone, and the store hands it over as the integer 3600; it is activity like any other.
double timelineSeconds(const StoreQuery& query, int column)
{
    if (const auto whole = query.integer(column)) {
        return static_cast<double>(*whole);
    }
    return query.seconds(column).value_or(0);
}

std::map<std::int64_t, HourBucket> hourBuckets(sqlite3* db, std::int64_t dayStartUTC)
{
    const std::string dayStart = std::to_string(dayStartUTC);
    StoreQuery query(db,
        filled(R"(    WITH RECURSIVE hour_bounds AS (
        SELECT
            {} AS h_start,
            0 AS h
        UNION ALL
        SELECT h_start + 3600, h + 1
        FROM hour_bounds
        WHERE h < 23
    ),
    session_hours AS (
        SELECT
            s.app_name,
            hb.h AS hour,
            MAX(0, MIN(s.ended_at, hb.h_start + 3600) - MAX(s.started_at, hb.h_start)) AS secs
        FROM app_sessions s
        JOIN hour_bounds hb
            ON s.ended_at > hb.h_start
           AND s.started_at < hb.h_start + 3600
        WHERE s.duration_sec IS NOT NULL
          AND s.duration_sec >= 3
          AND s.started_at IS NOT NULL AND s.ended_at IS NOT NULL
          AND s.started_at >= {}{}
    )
    SELECT
        app_name,
        hour AS h,
        SUM(secs) AS total_secs
    FROM session_hours
    WHERE secs > 0
    GROUP BY app_name, hour
    ORDER BY hour, total_secs DESC)",
            {dayStart, dayStart, excludeSystemAliased}));
    const int appName = query.column("app_name");
    const int hour = query.column("h");
    const int totalSecs = query.column("total_secs");

    std::map<std::int64_t, HourBucket> buckets;
    while (query.next()) {
        auto name = query.text(appName);
        const auto itsHour = query.integer(hour);
        const double seconds = timelineSeconds(query, totalSecs);
        if (name && itsHour && seconds > 0) {
            HourBucket& bucket = buckets[*itsHour];
            bucket.total += seconds;
            bucket.apps.emplace_back(*std::move(name), seconds);
        }
    }
    return buckets;
}

} // namespace

TodayOverview queryTodayOverview(
    sqlite3* db, const std::string& dateFilter, const KernelFigures& kernelFigures)
{
    TodayOverview overview{.bootTime = static_cast<Date>(kernelFigures.bootTime().value_or(0))};
    StoreQuery query(db,
        filled(
            R"(    SELECT MIN(started_at) fa, MAX(ended_at) la, COUNT(*) sc, COUNT(DISTINCT app_name) ac, SUM(duration_sec) ts
    FROM app_sessions WHERE duration_sec IS NOT NULL
      AND started_at IS NOT NULL AND ended_at IS NOT NULL
      AND {}{})",
            {dateFilter, excludeSystemFull}));
    double seconds = 0;
    if (query.next()) {
        overview.sessionCount = query.integer(query.column("sc")).value_or(0);
        seconds = query.seconds(query.column("ts")).value_or(0);
        overview.firstActivity = query.real(query.column("fa"));
        overview.lastActivity = query.real(query.column("la"));
        overview.activeAppCount = query.integer(query.column("ac")).value_or(0);
    }
    overview.totalActiveHours = seconds / 3600;
    overview.appSwitchCount = overview.sessionCount;
    if (overview.sessionCount > 0) {
        overview.avgSessionMinutes = seconds / 60 / static_cast<double>(overview.sessionCount);
    }
    overview.longestSessionMinutes = longestSessionSec(db, dateFilter) / 60;
    return overview;
}

HistoryOverview queryHistoryOverview(sqlite3* db, const std::string& dateFilter)
{
    HistoryOverview overview;
    StoreQuery query(db,
        filled(
            R"(    SELECT COUNT(*) sc, COUNT(DISTINCT app_name) ac, SUM(duration_sec) ts
    FROM app_sessions WHERE duration_sec IS NOT NULL
      AND started_at IS NOT NULL AND ended_at IS NOT NULL
      AND {}{})",
            {dateFilter, excludeSystemFull}));
    if (query.next()) {
        overview.totalActiveHours = query.seconds(query.column("ts")).value_or(0) / 3600;
        overview.activeAppCount = query.integer(query.column("ac")).value_or(0);
        overview.appSwitchCount = query.integer(query.column("sc")).value_or(0);
    }
    overview.bootCount = bootCount(db, dateFilter);
    return overview;
}

std::vector<AppUsage> queryAppUsage(
    sqlite3* db, const std::string& dateFilter, const RuleSet& rules)
{
    // An application with one row without an identifier reports 'unknown', as that sorts above most
    // identifiers, and falls out of its category for the period. Accepted: the page says that
    // something is not known.
    StoreQuery query(db,
        filled(
            R"(    SELECT app_name, MAX(COALESCE(NULLIF(bundle_id,''), 'unknown')) AS bundle_id,
           COUNT(*) sess, SUM(duration_sec) sec
    FROM app_sessions WHERE duration_sec IS NOT NULL
      AND started_at IS NOT NULL AND ended_at IS NOT NULL
      AND {}{}
    GROUP BY app_name ORDER BY sec DESC LIMIT 20)",
            {dateFilter, excludeSystemFull}));
    const int appName = query.column("app_name");
    const int bundleId = query.column("bundle_id");
    const int sess = query.column("sess");
    const int sec = query.column("sec");

    std::vector<AppUsage> apps;
    while (query.next()) {
        const auto name = query.text(appName);
        const auto seconds = query.seconds(sec);
        const auto sessions = query.integer(sess);
        if (!name || !seconds || !sessions) {
            continue;
        }
        const std::string bundle = query.text(bundleId).value_or("unknown");
        const bool isKnown = !bundle.empty() && bundle != "unknown";
        apps.push_back({.appName = *name,
            .bundleId = bundle,
            .totalSeconds = *seconds,
            .sessionCount = *sessions,
            .categoryLabel
            = CategoryStore::classify(rules, isKnown ? std::optional(bundle) : std::nullopt, *name)
                  .label});
    }
    return apps;
}

std::vector<HourlyTimelineEntry> queryHourlyTimeline(sqlite3* db, std::int64_t dayStartUTC)
{
    std::vector<HourlyTimelineEntry> timeline;
    for (auto& [hour, bucket] : hourBuckets(db, dayStartUTC)) {
        HourlyTimelineEntry entry{.hour = hour, .total = bucket.total};
        for (auto& [name, seconds] : bucket.apps) {
            entry.apps.push_back({.hour = hour, .appName = name, .seconds = seconds});
        }
        std::ranges::stable_sort(entry.apps, std::greater<>(), &HourUsage::seconds);
        timeline.push_back(std::move(entry));
    }
    return timeline;
}

} // namespace quillbrook
