#include "shell/model/TodayStatements.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

constexpr double kMidnight = 1767196800; // 2026-01-01T00:00:00+08:00

class TodayStatementsTest : public testing::Test {
protected:
    TodayStatementsTest()
    {
        const StoreReader store(path());
        store.exec("CREATE TABLE app_sessions (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "app_name TEXT NOT NULL, bundle_id TEXT, started_at REAL NOT NULL, "
                   "ended_at REAL, duration_sec REAL, close_type INTEGER DEFAULT 0);"
                   "CREATE INDEX idx_sessions_time ON app_sessions(started_at);"
                   "CREATE INDEX idx_sessions_start_ended_app "
                   "ON app_sessions(started_at, ended_at, app_name);"
                   "CREATE TABLE alerts (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "timestamp REAL NOT NULL);"
                   "CREATE INDEX idx_alerts_time ON alerts(timestamp);"
                   "CREATE TABLE keystrokes (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                   "timestamp REAL NOT NULL, input_method TEXT, "
                   "keystroke_count INTEGER DEFAULT 0);"
                   "CREATE INDEX idx_ks_time ON keystrokes(timestamp);");
    }

    fs::path path() const { return directory.path() / "monitor.db"; }

    Connection open() const
    {
        return openConnection(path().string(), SQLITE_OPEN_READONLY).connection;
    }

    static double value(const Connection& connection, std::string_view sql)
    {
        const Statement statement = prepare(connection.get(), sql);
        EXPECT_TRUE(statement) << sqlite3_errmsg(connection.get());
        EXPECT_EQ(sqlite3_step(statement.get()), SQLITE_ROW);
        return sqlite3_column_double(statement.get(), 0);
    }

    static std::vector<std::string> statementsOfToday()
    {
        return {std::string(kActiveSecondsToday), std::string(kAlertsToday), tokensTodaySql()};
    }

    /// Both ways of asking, to the last bit.
    void expectEqualAnswers() const
    {
        const Connection whole = open();
        const Connection narrow = open();
        narrowToToday(narrow.get());
        for (const std::string& sql : statementsOfToday()) {
            EXPECT_EQ(value(whole, sql), value(narrow, sql)) << sql;
        }
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kMidnight + 43200};
};

/// A time as stores may hold it: around today's borders to the millisecond, anywhere, or nonsense.
std::string randomTime(std::mt19937& random)
{
    const auto upTo
        = [&random](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    switch (upTo(9)) {
    case 0:
        return "'no time'";
    case 1:
        return upTo(1) == 0 ? "9e999" : "-1e15";
    case 2:
    case 3:
        return shortestText(kMidnight + (upTo(4000) - 2000) / 1000.0);
    case 4:
        return shortestText(kMidnight + (upTo(40) - 20) / 20000.0);
    default:
        return shortestText(kMidnight + upTo(86400 * 3) - 86400.0 * 2 + upTo(999) / 1000.0);
    }
}

TEST_F(TodayStatementsTest, NarrowedViewsChangeNoAnswerOnRandomStores)
{
    std::mt19937 random(20260101);
    const std::vector<std::string> methods{"shuangpin", "english", "quanpin", "other"};
    const std::vector<std::string> names{"Editor", "Mail", "loginwindow", "Login Helper"};
    int rowsOfToday = 0;
    const StoreReader store(path());
    store.exec("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY");
    for (int round = 0; round < 1000; ++round) {
        std::string sql = "BEGIN; DELETE FROM app_sessions; DELETE FROM alerts; "
                          "DELETE FROM keystrokes;";
        const int rows = std::uniform_int_distribution<int>(0, 40)(random);
        for (int row = 0; row < rows; ++row) {
            const std::string amount = std::to_string(random() % 100000);
            sql += filled("INSERT INTO app_sessions (app_name, started_at, duration_sec) "
                          "VALUES ('{}', {}, {});",
                {names[random() % names.size()], randomTime(random),
                    random() % 8 == 0 ? "NULL" : amount + ".1"});
            sql += filled("INSERT INTO alerts (timestamp) VALUES ({});", {randomTime(random)});
            sql += filled("INSERT INTO keystrokes (timestamp, input_method, keystroke_count) "
                          "VALUES ({}, '{}', {});",
                {randomTime(random), methods[random() % methods.size()], amount});
        }
        store.exec(sql + "COMMIT");
        machine.clock.set(kMidnight + static_cast<double>(random() % 86400000) / 1000);
        expectEqualAnswers();
        rowsOfToday += static_cast<int>(value(open(), kAlertsToday));
    }
    EXPECT_GT(rowsOfToday, 1000);
}

TEST_F(TodayStatementsTest, ARowThatRoundsUpToMidnightIsStillSeen)
{
    StoreReader(path()).exec(filled("INSERT INTO alerts (timestamp) VALUES ({}), ({})",
        {shortestText(kMidnight - 0.0004), shortestText(kMidnight - 0.0006)}));
    expectEqualAnswers();
    EXPECT_EQ(value(open(), kAlertsToday), 1);
}

TEST_F(TodayStatementsTest, TheViewsWalkTheIndexes)
{
    const Connection connection = open();
    narrowToToday(connection.get());
    for (const std::string& sql : statementsOfToday()) {
        const Statement plan = prepare(connection.get(), "EXPLAIN QUERY PLAN " + sql);
        std::string lines;
        while (sqlite3_step(plan.get()) == SQLITE_ROW) {
            lines.append(columnText(plan, 3)).append("\n");
        }
        EXPECT_THAT(lines, HasSubstr(" USING INTEGER PRIMARY KEY (rowid>?)"));
        EXPECT_THAT(
            lines, ContainsRegex(" USING COVERING INDEX idx_.* \\((started_at|timestamp)>"));
        EXPECT_THAT(lines, Not(HasSubstr("SCAN")));
    }
}

} // namespace
} // namespace quillbrook
