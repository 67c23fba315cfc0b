#include "engine/MonitorStore.h"

#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "engine/StoreSchema.h"
#include "platform/Clock.h"
#include "platform/KernelFigures.h"
#include "platform/UserDefaults.h"

#include <cmath>
#include <utility>
#include <vector>

namespace quillbrook {

namespace {

constexpr std::string_view kBootTimeKey = "lastRecordedBootTime";
constexpr double kSameBootSec = 1.0; // the kernel's figure moves when the clock is corrected
constexpr double kBootRetentionSec = 2592000; // 30 days
constexpr std::int64_t kSessionElsewhere = -1; // no row's number, and not 0

} // namespace

MonitorStore::MonitorStore(const Platform& platform, MonitorLog& log)
    : platform(platform)
    , log(log)
    , writer(platform, log, [this](double now) {
        return std::vector<StoreWriter::Whole>{
            {.isTransaction = true, .writes = {[this] { createTables(); }}},
            {.isTransaction = true, .writes = {[this, now] { repair(now); }}},
            {.isTransaction = true, .writes = {[this] { carryOver(); }}}};
    })
{
}

bool MonitorStore::dbOpen(const std::filesystem::path& dbPath)
{
    if (const auto message = writer.open(dbPath)) {
        log.log("❌ 无法打开数据库: " + *message);
        return false;
    }
    return true;
}

void MonitorStore::write(StoreWriter::Write write)
{
    if (together) {
        together->writes.push_back(std::move(write));
        return;
    }
    StoreWriter::Whole single;
    single.writes.push_back(std::move(write));
    writer.write(std::move(single));
}

void MonitorStore::writeTogether()
{
    StoreWriter::Whole whole = *std::move(together);
    together.reset();
    writer.write(std::move(whole));
}

void MonitorStore::dbCreateTables()
{
    const Together whole = transaction();
    write([this] { createTables(); });
    recordBoot();
}

void MonitorStore::createTables()
{
    createSchema(writer.handle(), [this](const std::string& sql) { dbExec(sql); });
}

void MonitorStore::recordBoot()
{
    const auto kernelBootTime = platform.kernelFigures.bootTime();
    if (!kernelBootTime) {
        return;
    }
    const auto bootTime = static_cast<double>(*kernelBootTime);
    const double recorded = platform.userDefaults.doubleForKey(kBootTimeKey);
    if (recorded != 0 && std::abs(recorded - bootTime) <= kSameBootSec) {
        return;
    }
    platform.userDefaults.setDouble(kBootTimeKey, bootTime);

    const double now = platform.clock.now();
    write([this, now, bootTime] {
        dbExec(filled("INSERT INTO boot_events (timestamp, boot_time) VALUES ({}, {})",
            {shortestText(now), shortestText(bootTime)}));
        dbExec(filled("DELETE FROM boot_events WHERE timestamp < {}",
            {shortestText(now - kBootRetentionSec)}));
    });
}

void MonitorStore::dbRepair()
{
    const Together whole = transaction();
    write([this, now = platform.clock.now()] { repair(now); });
}

void MonitorStore::repair(double now)
{
    // The newest open session has no later row to end at, and stays open: nobody knows its end.
    dbExec(R"(    UPDATE app_sessions
    SET ended_at = (
            SELECT MIN(s2.started_at) FROM app_sessions s2
            WHERE s2.started_at > app_sessions.started_at
        ),
        duration_sec = (
            SELECT MIN(s2.started_at) FROM app_sessions s2
            WHERE s2.started_at > app_sessions.started_at
        ) - started_at
    WHERE ended_at IS NULL
      AND EXISTS (
          SELECT 1 FROM app_sessions s2
          WHERE s2.started_at > app_sessions.started_at
      ))");
    removeDoubledSessions();
    const std::string end = shortestText(now);
    dbExec(filled(R"(    UPDATE idle_periods
    SET ended_at = {},
        duration_sec = {} - started_at,
        source_type = 4
    WHERE ended_at IS NULL)",
        {end, end}));
}

void MonitorStore::carryOver()
{
    // The rows that are under way went with the store that was lost. A session that is over leaves
    // nothing but the mark that there was one: its row's number may be another's here.
    const RowsUnderWay lost = writer.rows;
    if (lost.session) {
        insertSession(*lost.session);
    } else if (lost.currentSessionId != 0) {
        writer.rows.currentSessionId = kSessionElsewhere;
    }
    if (lost.idlePeriod) {
        insertIdlePeriod(*lost.idlePeriod);
    }
}

void MonitorStore::removeDoubledSessions()
{
    // Of two rows of one application that began less than 5 seconds apart, the one with the larger
    // id goes, also when the row that condemns it goes itself. The neighbourhood in time comes from
    // the index, a second wider than the exact test. A start that is no number compares as one in
    // the exact test but stands behind all numbers in the index, so such rows are paired by name.
    dbExec(R"(    DELETE FROM app_sessions WHERE id IN (
        SELECT s2.id FROM app_sessions s2
        WHERE EXISTS (
            SELECT 1 FROM app_sessions s1
            WHERE s1.started_at BETWEEN s2.started_at - 6 AND s2.started_at + 6
              AND s1.id < s2.id AND ABS(s1.started_at - s2.started_at) < 5
              AND s1.app_name = s2.app_name
        )
        UNION ALL
        SELECT MAX(odd.id, other.id) FROM app_sessions odd
        JOIN app_sessions other ON other.app_name = odd.app_name AND other.id <> odd.id
        WHERE odd.started_at >= '' AND ABS(odd.started_at - other.started_at) < 5
    ))");
}

void MonitorStore::startNewSession(
    const std::string& appName, const std::string& bundleId, std::int64_t closeType)
{
    hasSessionWhenWritten = true;
    write([this,
              session = OpenSession{.appName = appName,
                  .bundleId = bundleId,
                  .startedAt = platform.clock.now(),
                  .closeType = closeType}] { insertSession(session); });
}

void MonitorStore::insertSession(const OpenSession& session)
{
    const bool isTaken = dbExec(
        filled(R"(    INSERT INTO app_sessions (app_name, bundle_id, started_at, close_type)
    VALUES ('{}', '{}', {}, {}))",
            {sqlQuoted(session.appName), sqlQuoted(session.bundleId),
                shortestText(session.startedAt), std::to_string(session.closeType)}));
    if (isTaken) {
        // After a failed INSERT this is the row before, closed already, which no later close
        // touches.
        sqlite3* store = writer.handle();
        writer.rows.currentSessionId = store != nullptr ? sqlite3_last_insert_rowid(store) : 0;
        writer.rows.session = session;
    }
}

void MonitorStore::closeCurrentSession()
{
    write([this, now = platform.clock.now()] { updateCurrentSession(now); });
}

void MonitorStore::endCurrentSessionAt(double endedAt)
{
    hasSessionWhenWritten = false;
    write([this, endedAt] {
        if (updateCurrentSession(endedAt)) {
            writer.rows.currentSessionId = 0;
        }
    });
}

bool MonitorStore::updateCurrentSession(double endedAt)
{
    if (writer.rows.currentSessionId < 1) {
        return true;
    }
    const std::string end = shortestText(endedAt);
    const bool isTaken
        = dbExec(filled(R"(    UPDATE app_sessions SET ended_at = {}, duration_sec = {} - started_at
    WHERE id = {} AND ended_at IS NULL)",
            {end, end, std::to_string(writer.rows.currentSessionId)}));
    if (isTaken) {
        writer.rows.session.reset();
    }
    return isTaken;
}

bool MonitorStore::hasCurrentSession() const
{
    return writer.isAnythingDue() ? hasSessionWhenWritten : writer.rows.currentSessionId != 0;
}

void MonitorStore::startIdlePeriod(double startedAt, std::int64_t sourceType)
{
    write([this, period = OpenIdlePeriod{.startedAt = startedAt, .sourceType = sourceType}] {
        insertIdlePeriod(period);
    });
}

void MonitorStore::insertIdlePeriod(const OpenIdlePeriod& period)
{
    if (dbExec(filled(R"(    INSERT INTO idle_periods (started_at, source_type)
    VALUES ({}, {}))",
            {shortestText(period.startedAt), std::to_string(period.sourceType)}))) {
        writer.rows.idlePeriod = period;
    }
}

void MonitorStore::addIdlePeriod(double startedAt, double endedAt, std::int64_t sourceType)
{
    write([this, startedAt, endedAt, sourceType] {
        dbExec(filled(
            R"(    INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type)
    VALUES ({}, {}, {}, {}))",
            {shortestText(startedAt), shortestText(endedAt), shortestText(endedAt - startedAt),
                std::to_string(sourceType)}));
    });
}

void MonitorStore::closeIdlePeriods(double endedAt)
{
    updateIdlePeriods(R"(    UPDATE idle_periods
    SET ended_at = {}, duration_sec = {} - started_at
    WHERE ended_at IS NULL)",
        endedAt);
}

void MonitorStore::closeIdlePeriodsAtExit()
{
    updateIdlePeriods(R"(    UPDATE idle_periods
    SET ended_at = {}, duration_sec = {} - started_at, source_type = 4
    WHERE ended_at IS NULL)",
        platform.clock.now());
}

void MonitorStore::updateIdlePeriods(std::string_view form, double endedAt)
{
    write([this, form, end = shortestText(endedAt)] {
        if (dbExec(filled(form, {end, end}))) {
            writer.rows.idlePeriod.reset();
        }
    });
}

void MonitorStore::addAlert(std::string_view alertType, std::string_view severity,
    const std::string& message, const std::string& metricsJson)
{
    write([this,
              sql = filled(
                  R"(    INSERT INTO alerts (timestamp, alert_type, severity, message, metrics_json)
    VALUES ({}, '{}', '{}', '{}', '{}'))",
                  {shortestText(platform.clock.now()), alertType, severity, sqlQuoted(message),
                      sqlQuoted(metricsJson)})] { dbExec(sql); });
}

void MonitorStore::addKeystrokes(
    double timestamp, const std::string& appName, std::string_view inputMethod, std::int32_t count)
{
    writer.writeNow([this, timestamp, appName, method = std::string(inputMethod), count] {
        return insertKeystrokes(timestamp, appName, method, count);
    });
}

int MonitorStore::insertKeystrokes(
    double timestamp, const std::string& appName, std::string_view inputMethod, std::int32_t count)
{
    sqlite3* store = writer.handle();
    const Statement statement = prepare(store,
        "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
        "VALUES (?, ?, ?, ?)");
    if (!statement) {
        log.log(std::string("⚠️ SQL 准备失败: ") + sqlite3_errmsg(store));
        return sqlite3_errcode(store);
    }
    sqlite3_bind_double(statement.get(), 1, timestamp);
    sqlite3_bind_text(
        statement.get(), 2, appName.data(), static_cast<int>(appName.size()), SQLITE_STATIC);
    sqlite3_bind_text(statement.get(), 3, inputMethod.data(), static_cast<int>(inputMethod.size()),
        SQLITE_STATIC);
    sqlite3_bind_int(statement.get(), 4, count);
    const int result = sqlite3_step(statement.get());
    if (result != SQLITE_DONE) {
        log.log(std::string("⚠️ 插入击键数据失败: ") + sqlite3_errmsg(store));
    }
    return result;
}

} // namespace quillbrook
