#include "report/SessionReports.h"

#include "base/Text.h"
#include "report/FocusSpread.h"
#include "report/NarrowedTable.h"
#include "report/PeriodFilters.h"
#include "report/StoreQuery.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace quillbrook {

namespace {

constexpr std::string_view kDailyAvgBegin = R"(    SELECT
        strftime('%m-%d', datetime(started_at, 'unixepoch', '+8 hours')) AS day,
        ROUND(AVG(CASE WHEN duration_sec < 300 THEN duration_sec END)/60, 2) AS u5,
        ROUND(AVG(CASE WHEN duration_sec BETWEEN 300 AND 600 THEN duration_sec END)/60, 2) AS m5,
        ROUND(AVG(CASE WHEN duration_sec > 600 THEN duration_sec END)/60, 2) AS o10
    FROM app_sessions
    WHERE duration_sec >= 10
      AND datetime(started_at, 'unixepoch', '+8 hours') >= datetime('now', '+8 hours', '-7 days'))";
constexpr std::string_view kDailyAvgEnd = R"(
    GROUP BY day
    ORDER BY day)";

/// By the stored `close_type`. Code 4 is retired, and its empty place keeps "startup" at 5.
constexpr std::array<std::string_view, 6> closeTypeLabels
    = {"switch", "idle_recover", "sleep_recover", "lock_recover", "", "startup"};

struct BucketForm {
    std::string_view label;
    std::int64_t rangeMin;
};

constexpr auto kBuckets = std::to_array<BucketForm>({{"<1min", 0}, {"1-2min", 60}, {"2-3min", 120},
    {"3-4min", 180}, {"4-5min", 240}, {"5-6min", 300}, {"6min+", 360}});

/// Sets `status` and `closeType`. Every ended session that didn't begin by a switch counts as
/// "recover", one at startup included, as the page tells switches from everything else.
void describe(SessionDetail& session, std::int64_t code)
{
    if (!session.endedAt) {
        session.status = "active";
        session.closeType = "—";
        return;
    }
    session.status = code == 0 ? "closed" : "recover";
    const bool isKnown = code >= 0 && code < static_cast<std::int64_t>(closeTypeLabels.size());
    session.closeType = closeTypeLabels[isKnown ? static_cast<std::size_t>(code) : 0];
}

} // namespace

constexpr std::string_view kDailyAvgSessionsSql
    = joined<kDailyAvgBegin, excludeSystemNames, kDailyAvgEnd>;

std::vector<SessionDetail> queryRecentSessions(sqlite3* db, const std::string& filter)
{
    StoreQuery query(db,
        filled(R"(    SELECT app_name, bundle_id, started_at, ended_at, duration_sec, close_type
    FROM app_sessions
    WHERE {}{}
    ORDER BY started_at DESC
    LIMIT 200)",
            {filter, excludeSystemFull}));
    const int appName = query.column("app_name");
    const int bundleId = query.column("bundle_id");
    const int startedAt = query.column("started_at");
    const int endedAt = query.column("ended_at");
    const int durationSec = query.column("duration_sec");
    const int closeType = query.column("close_type");
    std::vector<SessionDetail> sessions;
    sessions.reserve(200);
    while (query.next()) {
        auto name = query.text(appName);
        const auto start = query.real(startedAt);
        if (!name || !start) {
            continue;
        }
        SessionDetail session{.appName = *std::move(name),
            .bundleId = query.text(bundleId).value_or("unknown"),
            .startedAt = *start,
            .endedAt = query.real(endedAt),
            .durationSec = query.real(durationSec).value_or(0)};
        describe(session, query.integer(closeType).value_or(0));
        sessions.push_back(std::move(session));
    }
    return sessions;
}

std::vector<IdleRecord> queryRecentIdles(sqlite3* db, const std::string& filter)
{
    StoreQuery query(db,
        filled(R"(    SELECT id, started_at, ended_at, duration_sec, source_type
    FROM idle_periods
    WHERE {}
    ORDER BY started_at DESC
    LIMIT 200)",
            {filter}));
    const int id = query.column("id");
    const int startedAt = query.column("started_at");
    const int endedAt = query.column("ended_at");
    const int durationSec = query.column("duration_sec");
    const int sourceType = query.column("source_type");
    std::vector<IdleRecord> idles;
    idles.reserve(200);
    while (query.next()) {
        const auto rowId = query.integer(id);
        const auto start = query.real(startedAt);
        if (rowId && start) {
            idles.push_back({.rowId = *rowId,
                .startedAt = *start,
                .endedAt = query.real(endedAt),
                .durationSec = query.real(durationSec).value_or(0),
                .sourceType = query.integer(sourceType).value_or(1)});
        }
    }
    return idles;
}

std::vector<FocusHour> queryFocusHours(sqlite3* db, FocusPeriod period, double now)
{
    StoreQuery query(db,
        filled(R"(    SELECT started_at,
           CASE WHEN ended_at IS NULL THEN strftime('%s','now') ELSE ended_at END AS end_ts
    FROM app_sessions
    WHERE {}
      AND duration_sec > 0
    ORDER BY started_at)",
            {dateFilter(period)}));
    const int startedAt = query.column("started_at");
    const int endTs = query.column("end_ts");
    FocusSpread spread;
    while (query.next()) {
        const auto start = query.real(startedAt);
        const auto end = query.real(endTs);
        if (start && end) {
            spread.add(*start, *end);
        }
    }
    return spread.hours(maxHour(period, now));
}

std::vector<DurationBucket> queryDurationBuckets(sqlite3* db, FocusPeriod period)
{
    StoreQuery query(db,
        filled(R"(    SELECT
        CASE
            WHEN duration_sec < 60 THEN 0
            WHEN duration_sec < 120 THEN 1
            WHEN duration_sec < 180 THEN 2
            WHEN duration_sec < 240 THEN 3
            WHEN duration_sec < 300 THEN 4
            WHEN duration_sec < 360 THEN 5
            ELSE 6
        END AS bucket_id,
        COUNT(*) AS cnt
    FROM app_sessions
    WHERE duration_sec >= 10
      AND {}{}
    GROUP BY bucket_id
    ORDER BY bucket_id)",
            {dateFilter(period), excludeSystemNames}));
    std::vector<DurationBucket> buckets;
    while (query.next()) {
        const auto bucketId = query.integer(query.column("bucket_id"));
        const auto count = query.integer(query.column("cnt"));
        if (bucketId && count && *bucketId >= 0 && *bucketId < 7) {
            const BucketForm& form = kBuckets[static_cast<std::size_t>(*bucketId)];
            buckets.push_back(
                {.label = std::string(form.label), .rangeMin = form.rangeMin, .count = *count});
        }
    }
    return buckets;
}

std::vector<DailyAvgSession> queryDailyAvgSessions(sqlite3* db)
{
    // The statement's own condition can use no index. The view holds at least the rows that it
    // lets pass, in the order of the table, so that means come out the same to the last bit, but
    // for lengths that are not finite. The plus keeps SQLite from
    // looking for the least rowid along the table, past all of history, and not along the index.
    const NarrowedTable recent(db, "app_sessions", R"(duration_sec * 0 = 0
      AND rowid >= (SELECT MIN(+rowid) FROM main.app_sessions
        WHERE started_at >= strftime('%s', 'now') - 7*86400 - 1))");
    std::vector<DailyAvgSession> days;
    StoreQuery query(db, kDailyAvgSessionsSql);
    while (query.next()) {
        if (auto day = query.text(query.column("day"))) {
            days.push_back({.date = *std::move(day),
                .avgUnder5 = query.real(query.column("u5")).value_or(0),
                .avg5to10 = query.real(query.column("m5")).value_or(0),
                .avgOver10 = query.real(query.column("o10")).value_or(0)});
        }
    }
    return days;
}

} // namespace quillbrook
