#include "support/EngineFixture.h"

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class MonitorStoreTest : public EngineFixture {
protected:
    std::vector<std::string> boots() const
    {
        return store().rows("SELECT timestamp, boot_time FROM boot_events ORDER BY id");
    }
};

TEST_F(MonitorStoreTest, AFirstStartMakesAllTablesAndIndexes)
{
    start();
    EXPECT_THAT(store().rows("SELECT name FROM sqlite_master WHERE type = 'table' "
                             "AND name NOT LIKE 'sqlite%' ORDER BY name"),
        ElementsAre("alerts", "app_categories", "app_sessions", "boot_events", "categories",
            "idle_periods", "keystrokes"));
    EXPECT_THAT(store().rows("SELECT name FROM sqlite_master WHERE type = 'index' "
                             "AND name NOT LIKE 'sqlite%' ORDER BY name"),
        ElementsAre("idx_ac_match", "idx_alerts_time", "idx_boot_time", "idx_idle_source",
            "idx_idle_time", "idx_ks_time", "idx_sessions_ended", "idx_sessions_ended_start",
            "idx_sessions_start_ended_app", "idx_sessions_time"));
    EXPECT_EQ(store().value("PRAGMA journal_mode"), "wal");
}

TEST_F(MonitorStoreTest, TablesAreMadeWordForWord)
{
    start();
    EXPECT_EQ(store().value("SELECT sql FROM sqlite_master WHERE name = 'app_sessions'"),
        "CREATE TABLE app_sessions (\n        id INTEGER PRIMARY KEY AUTOINCREMENT,\n"
        "        app_name TEXT NOT NULL,\n        bundle_id TEXT,\n"
        "        started_at REAL NOT NULL,\n        ended_at REAL,\n"
        "        duration_sec REAL,\n        close_type INTEGER DEFAULT 0\n    )");
    EXPECT_EQ(store().value("SELECT sql FROM sqlite_master WHERE name = 'app_categories'"),
        "CREATE TABLE app_categories (\n        id          INTEGER PRIMARY KEY AUTOINCREMENT,\n"
        "        match_key   TEXT NOT NULL,\n"
        "        match_type  TEXT NOT NULL DEFAULT 'bundle_prefix',\n"
        "        category_id INTEGER NOT NULL,\n"
        "        source      TEXT NOT NULL DEFAULT 'system',\n"
        "        updated_at  REAL NOT NULL DEFAULT (strftime('%s', 'now')),\n"
        "        FOREIGN KEY (category_id) REFERENCES categories(id),\n"
        "        UNIQUE(match_key, match_type)\n    )");
}

TEST_F(MonitorStoreTest, AFirstStartSeedsTheCategories)
{
    start();
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM categories"), "13");
    EXPECT_EQ(
        store().value("SELECT COUNT(*), MIN(updated_at) FROM app_categories"), "113|1767225600.0");
    stop();
    machine.runFor(100);
    start();
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM categories"), "13");
    EXPECT_EQ(
        store().value("SELECT COUNT(*), MAX(updated_at) FROM app_categories"), "113|1767225600.0");
}

TEST_F(MonitorStoreTest, AUsersRowInASeedsPlaceStays)
{
    start();
    stop();
    store().exec("UPDATE app_categories SET source = 'user', category_id = 10 "
                 "WHERE match_key = 'com.apple.Safari'");
    start();
    EXPECT_EQ(store().value("SELECT source, category_id FROM app_categories "
                            "WHERE match_key = 'com.apple.Safari'"),
        "user|10");
}

TEST_F(MonitorStoreTest, ABootIsRecordedOnce)
{
    machine.kernelFigures.setBootTime(1767222000);
    start();
    EXPECT_THAT(boots(), ElementsAre("1767225600.0|1767222000.0"));
    EXPECT_EQ(machine.userDefaults.doubleForKey("lastRecordedBootTime"), 1767222000);
    stop();
    start();
    EXPECT_THAT(boots(), ElementsAre("1767225600.0|1767222000.0"));
    stop();
    machine.kernelFigures.setBootTime(1767222001); // the clock was set by a second
    start();
    EXPECT_THAT(boots(), ElementsAre("1767225600.0|1767222000.0"));
    EXPECT_EQ(machine.userDefaults.doubleForKey("lastRecordedBootTime"), 1767222000);
    stop();
    machine.kernelFigures.setBootTime(1767221998);
    start();
    EXPECT_THAT(boots(), ElementsAre("1767225600.0|1767222000.0", "1767225600.0|1767221998.0"));
}

TEST_F(MonitorStoreTest, AStoredBootTimeOfZeroIsNone)
{
    machine.kernelFigures.setBootTime(0);
    start();
    EXPECT_THAT(boots(), ElementsAre("1767225600.0|0.0"));
}

TEST_F(MonitorStoreTest, WithoutABootTimeNothingIsRecorded)
{
    machine.kernelFigures.setBootTime(std::nullopt);
    start();
    EXPECT_THAT(boots(), IsEmpty());
    EXPECT_FALSE(machine.userDefaults.all().contains("lastRecordedBootTime"));
}

TEST_F(MonitorStoreTest, BootsOlderThanThirtyDaysGoWhenANewOneComes)
{
    machine.kernelFigures.setBootTime(1767222000);
    start();
    stop();
    store().exec("INSERT INTO boot_events (timestamp, boot_time) VALUES "
                 "(1767225600 + 100 - 2592000, 1), (1767225600 + 99.5 - 2592000, 2)");
    start();
    stop();
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM boot_events"), "3");
    machine.clock.set(kStart + 100);
    machine.kernelFigures.setBootTime(1767222100);
    start();
    EXPECT_THAT(store().rows("SELECT boot_time FROM boot_events ORDER BY id"),
        ElementsAre("1767222000.0", "1.0", "1767222100.0"));
}

TEST_F(MonitorStoreTest, AnOlderSessionTableGainsTheColumn)
{
    store().exec("CREATE TABLE app_sessions (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                 "app_name TEXT NOT NULL, bundle_id TEXT, started_at REAL NOT NULL, "
                 "ended_at REAL, duration_sec REAL);"
                 "INSERT INTO app_sessions (app_name, started_at, ended_at, duration_sec) "
                 "VALUES ('A', 1000, 1010, 10), ('B', 2000, 2010, 10)");
    start();
    EXPECT_THAT(
        store().rows("SELECT app_name, close_type FROM app_sessions"), ElementsAre("A|0", "B|0"));
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
}

TEST_F(MonitorStoreTest, AnOlderIdleTableGainsTheColumn)
{
    store().exec("CREATE TABLE idle_periods (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                 "started_at REAL NOT NULL, ended_at REAL, duration_sec REAL);"
                 "INSERT INTO idle_periods (started_at, ended_at, duration_sec) "
                 "VALUES (1000, 1010, 10)");
    start();
    EXPECT_THAT(store().rows("SELECT source_type FROM idle_periods"), ElementsAre("1"));
}

TEST_F(MonitorStoreTest, FormerStartupCodesAreTurnedAtEveryStart)
{
    start();
    stop();
    for (int round = 0; round < 2; ++round) {
        store().exec("INSERT INTO app_sessions (app_name, started_at, ended_at, close_type) "
                     "VALUES ('A', 1000 + 100 * abs(random() % 1000), 9e9, 4)");
        start();
        stop();
    }
    store().exec("UPDATE app_sessions SET close_type = NULL WHERE id = 1;"
                 "INSERT INTO idle_periods (started_at, ended_at, source_type) "
                 "VALUES (1, 2, NULL)");
    start();
    EXPECT_THAT(
        store().rows("SELECT close_type FROM app_sessions ORDER BY id"), ElementsAre("0", "5"));
    EXPECT_THAT(store().rows("SELECT source_type FROM idle_periods"), ElementsAre("1"));
}

TEST_F(MonitorStoreTest, AFailedStatementIsOneLogLineWithItsBeginning)
{
    startWorkingIn("Editor");
    store().exec("DROP TABLE idle_periods");
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.runFor(1);
    EXPECT_THAT(logText(),
        HasSubstr("[2026-01-01T00:01:01Z] ⚠️ SQL 错误: no such table: idle_periods — "
                  "    INSERT INTO idle_periods (started_at, source_type)\n"
                  "    VALUES (1767225661, 3\n"
                  "[2026-01-01T00:01:01Z] 💤 Editor（1s）→ 空闲\n"));
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
}

TEST_F(MonitorStoreTest, NamesAreStoredAsTheyAre)
{
    const std::vector<std::string> names = {"it's '; DROP TABLE app_sessions; --",
        "表情 😀👩‍👩‍👧 \"引号\"", std::string(4096, 'n'), "a\nb"};
    startWorkingIn("Editor");
    for (const std::string& name : names) {
        machine.bringToFront(name, "o'" + name);
        machine.runFor(3);
    }
    for (const std::string& name : names) {
        EXPECT_THAT(store().rows("SELECT app_name FROM app_sessions"), Contains(name));
        EXPECT_THAT(store().rows("SELECT bundle_id FROM app_sessions"), Contains("o'" + name));
    }
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
}

} // namespace
} // namespace quillbrook
