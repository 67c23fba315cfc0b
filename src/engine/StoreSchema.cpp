#include "engine/StoreSchema.h"

#include "base/Sqlite.h"

#include <array>

namespace quillbrook {

namespace {

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

bool hasColumn(sqlite3* store, const std::string& table, std::string_view column)
{
    const Statement statement = prepare(store, "PRAGMA table_info(" + table + ")");
    while (statement && sqlite3_step(statement.get()) == SQLITE_ROW) {
        if (columnText(statement, 1) == column) {
            return true;
        }
    }
    return false;
}

void createSchema(sqlite3* store, const CategoryStore::Exec& dbExec)
{
    dbExec(kCreateSessions);
    if (!hasColumn(store, "app_sessions", "close_type")) {
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
    if (!hasColumn(store, "idle_periods", "source_type")) {
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
    CategoryStore::seedCategories(dbExec);
    CategoryStore::seedAppPrefixes(dbExec);
}

} // namespace quillbrook
