#include "engine/MonitorStore.h"

#include "base/Text.h"
#include "categories/CategoryStore.h"
#include "engine/MonitorLog.h"
#include "platform/Clock.h"
#include "platform/KernelFigures.h"
#include "platform/UserDefaults.h"

#include <array>
#include <cmath>
#include <system_error>

namespace quillbrook {

namespace {

constexpr std::string_view kBootTimeKey = "lastRecordedBootTime";
constexpr double kSameBootSec = 1.0; // the kernel's figure moves when the clock is corrected
constexpr double kBootRetentionSec = 2592000; // 30 days

constexpr const char* kCreateSessions = R"(    CREATE TABLE IF NOT EXISTS app_sessions (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        app_name TEXT NOT NULL,
        bundle_id TEXT,
        started_at REAL NOT NULL,
        ended_at REAL,
        duration_sec REAL,
        close_type INTEGER DEFAULT 0
    ))";

constexpr std::array kSessionIndexes = {
    "CREATE INDEX IF NOT EXISTS idx_sessions_time ON app_sessions(started_at)",
    "CREATE INDEX IF NOT EXISTS idx_sessions_ended ON app_sessions(ended_at)",
    "CREATE INDEX IF NOT EXISTS idx_sessions_start_ended_app ON app_sessions(started_at, ended_at, "
    "app_name)",
    "CREATE INDEX IF NOT EXISTS idx_sessions_ended_start ON app_sessions(ended_at, started_at)",
};

constexpr const char* kCreateAlerts = R"(    CREATE TABLE IF NOT EXISTS alerts (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        timestamp REAL NOT NULL,
        alert_type TEXT NOT NULL,
        severity TEXT NOT NULL,
        message TEXT NOT NULL,
        metrics_json TEXT
    ))";

constexpr const char* kCreateIdlePeriods = R"(    CREATE TABLE IF NOT EXISTS idle_periods (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        started_at REAL NOT NULL,
        ended_at REAL,
        duration_sec REAL,
        source_type INTEGER DEFAULT 1
    ))";

constexpr const char* kCreateBootEvents = R"(    CREATE TABLE IF NOT EXISTS boot_events (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        timestamp REAL NOT NULL,
        boot_time REAL NOT NULL
    ))";

constexpr const char* kCreateKeystrokes = R"(    CREATE TABLE IF NOT EXISTS keystrokes (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        timestamp REAL NOT NULL,
        app_name TEXT NOT NULL,
        input_method TEXT,
        keystroke_count INTEGER DEFAULT 0
    ))";

constexpr const char* kCreateCategories = R"(    CREATE TABLE IF NOT EXISTS categories (
        id    INTEGER PRIMARY KEY,
        key   TEXT NOT NULL UNIQUE,
        label TEXT NOT NULL,
        color TEXT NOT NULL
    ))";

constexpr const char* kCreateAppCategories = R"(    CREATE TABLE IF NOT EXISTS app_categories (
        id          INTEGER PRIMARY KEY AUTOINCREMENT,
        match_key   TEXT NOT NULL,
        match_type  TEXT NOT NULL DEFAULT 'bundle_prefix',
        category_id INTEGER NOT NULL,
        source      TEXT NOT NULL DEFAULT 'system',
        updated_at  REAL NOT NULL DEFAULT (strftime('%s', 'now')),
        FOREIGN KEY (category_id) REFERENCES categories(id),
        UNIQUE(match_key, match_type)
    ))";

} // namespace

bool MonitorStore::dbOpen(const std::filesystem::path& dbPath)
{
    std::error_code ignored;
    std::filesystem::create_directories(dbPath.parent_path(), ignored);

    OpenedConnection opened
        = openConnection(dbPath.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    connection = std::move(opened.connection);
    if (opened.result != SQLITE_OK) {
        log.log(std::string("❌ 无法打开数据库: ") + sqlite3_errmsg(connection.get()));
        return false;
    }
    // Somebody's long transaction lets the write-ahead log grow: behind it the file is cut again.
    for (const char* pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL",
             "PRAGMA busy_timeout=5000", "PRAGMA journal_size_limit=4194304"}) {
        sqlite3_exec(connection.get(), pragma, nullptr, nullptr, nullptr);
    }
    return true;
}

void MonitorStore::dbExec(const std::string& sql)
{
    if (sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        log.log(filled("⚠️ SQL 错误: {} — {}",
            {sqlite3_errmsg(connection.get()), firstCharacters(sql, 80)}));
    }
}

bool MonitorStore::hasColumn(const std::string& table, std::string_view column) const
{
    const Statement statement = prepare(connection.get(), "PRAGMA table_info(" + table + ")");
    while (statement && sqlite3_step(statement.get()) == SQLITE_ROW) {
        if (columnText(statement, 1) == column) {
            return true;
        }
    }
    return false;
}

void MonitorStore::dbCreateTables()
{
    const Transaction whole = transaction();
    dbExec(kCreateSessions);
    if (!hasColumn("app_sessions", "close_type")) {
        dbExec("ALTER TABLE app_sessions ADD COLUMN close_type INTEGER DEFAULT 0");
    }
    dbExec("UPDATE app_sessions SET close_type = 0 WHERE close_type IS NULL");
    // Startup was stored as 4 once.
    dbExec("UPDATE app_sessions SET close_type = 5 WHERE close_type = 4");
    for (const char* index : kSessionIndexes) {
        dbExec(index);
    }

    dbExec(kCreateAlerts);
    dbExec("CREATE INDEX IF NOT EXISTS idx_alerts_time ON alerts(timestamp)");

    dbExec(kCreateIdlePeriods);
    if (!hasColumn("idle_periods", "source_type")) {
        dbExec("ALTER TABLE idle_periods ADD COLUMN source_type INTEGER DEFAULT 1");
    }
    dbExec("UPDATE idle_periods SET source_type = 1 WHERE source_type IS NULL");
    dbExec("CREATE INDEX IF NOT EXISTS idx_idle_time ON idle_periods(started_at)");
    dbExec("CREATE INDEX IF NOT EXISTS idx_idle_source ON idle_periods(source_type)");

    dbExec(kCreateBootEvents);
    dbExec("CREATE INDEX IF NOT EXISTS idx_boot_time ON boot_events(timestamp)");

    dbExec(kCreateKeystrokes);
    dbExec("CREATE INDEX IF NOT EXISTS idx_ks_time ON keystrokes(timestamp)");

    dbExec(kCreateCategories);
    dbExec(kCreateAppCategories);
    dbExec("CREATE INDEX IF NOT EXISTS idx_ac_match ON app_categories(match_type, match_key)");
    const auto exec = [this](const std::string& sql) { dbExec(sql); };
    CategoryStore::seedCategories(exec);
    CategoryStore::seedAppPrefixes(exec);

    recordBoot();
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
    dbExec(filled("INSERT INTO boot_events (timestamp, boot_time) VALUES ({}, {})",
        {shortestText(now), shortestText(bootTime)}));
    dbExec(filled(
        "DELETE FROM boot_events WHERE timestamp < {}", {shortestText(now - kBootRetentionSec)}));
}

void MonitorStore::dbRepair()
{
    const Transaction whole = transaction();
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
    const std::string now = shortestText(platform.clock.now());
    dbExec(filled(R"(    UPDATE idle_periods
    SET ended_at = {},
        duration_sec = {} - started_at,
        source_type = 4
    WHERE ended_at IS NULL)",
        {now, now}));
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
    dbExec(filled(R"(    INSERT INTO app_sessions (app_name, bundle_id, started_at, close_type)
    VALUES ('{}', '{}', {}, {}))",
        {sqlQuoted(appName), sqlQuoted(bundleId), shortestText(platform.clock.now()),
            std::to_string(closeType)}));
    // After a failed INSERT this is the row before, closed already, which no later close touches.
    currentSessionId = connection ? sqlite3_last_insert_rowid(connection.get()) : 0;
}

void MonitorStore::closeCurrentSession()
{
    if (currentSessionId < 1) {
        return;
    }
    const std::string now = shortestText(platform.clock.now());
    dbExec(filled(R"(    UPDATE app_sessions SET ended_at = {}, duration_sec = {} - started_at
    WHERE id = {} AND ended_at IS NULL)",
        {now, now, std::to_string(currentSessionId)}));
}

void MonitorStore::endCurrentSessionAt(double endedAt)
{
    if (currentSessionId < 1) {
        return;
    }
    const std::string end = shortestText(endedAt);
    dbExec(filled(R"(    UPDATE app_sessions SET ended_at = {}, duration_sec = {} - started_at
    WHERE id = {} AND ended_at IS NULL)",
        {end, end, std::to_string(currentSessionId)}));
    currentSessionId = 0;
}

void MonitorStore::startIdlePeriod(double startedAt, std::int64_t sourceType)
{
    dbExec(filled(R"(    INSERT INTO idle_periods (started_at, source_type)
    VALUES ({}, {}))",
        {shortestText(startedAt), std::to_string(sourceType)}));
}

void MonitorStore::addIdlePeriod(double startedAt, double endedAt, std::int64_t sourceType)
{
    dbExec(filled(R"(    INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type)
    VALUES ({}, {}, {}, {}))",
        {shortestText(startedAt), shortestText(endedAt), shortestText(endedAt - startedAt),
            std::to_string(sourceType)}));
}

void MonitorStore::closeIdlePeriods(double endedAt)
{
    const std::string end = shortestText(endedAt);
    dbExec(filled(R"(    UPDATE idle_periods
    SET ended_at = {}, duration_sec = {} - started_at
    WHERE ended_at IS NULL)",
        {end, end}));
}

void MonitorStore::closeIdlePeriodsAtExit()
{
    const std::string now = shortestText(platform.clock.now());
    dbExec(filled(R"(    UPDATE idle_periods
    SET ended_at = {}, duration_sec = {} - started_at, source_type = 4
    WHERE ended_at IS NULL)",
        {now, now}));
}

void MonitorStore::addAlert(std::string_view alertType, std::string_view severity,
    const std::string& message, const std::string& metricsJson)
{
    dbExec(filled(R"(    INSERT INTO alerts (timestamp, alert_type, severity, message, metrics_json)
    VALUES ({}, '{}', '{}', '{}', '{}'))",
        {shortestText(platform.clock.now()), alertType, severity, sqlQuoted(message),
            sqlQuoted(metricsJson)}));
}

void MonitorStore::addKeystrokes(
    double timestamp, const std::string& appName, std::string_view inputMethod, std::int32_t count)
{
    const Statement statement = prepare(connection.get(),
        "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
        "VALUES (?, ?, ?, ?)");
    if (!statement) {
        log.log(std::string("⚠️ SQL 准备失败: ") + sqlite3_errmsg(connection.get()));
        return;
    }
    sqlite3_bind_double(statement.get(), 1, timestamp);
    sqlite3_bind_text(
        statement.get(), 2, appName.data(), static_cast<int>(appName.size()), SQLITE_STATIC);
    sqlite3_bind_text(statement.get(), 3, inputMethod.data(), static_cast<int>(inputMethod.size()),
        SQLITE_STATIC);
    sqlite3_bind_int(statement.get(), 4, count);
    if (sqlite3_step(statement.get()) != SQLITE_DONE) {
        log.log(
            std::string("⚠️ 插入击键数据失败: ") + sqlite3_errmsg(connection.get()));
    }
}

} // namespace quillbrook
