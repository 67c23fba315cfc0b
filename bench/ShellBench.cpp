#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/model/MenuBarVM.h"
#include "shell/model/TodayStatements.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

constexpr double kNow = 1767268800; // 2026-01-01T20:00:00+08:00
constexpr int kSessionsADay = 500;

/// A store of so many days up to `kNow`: sessions, keys for each minute in 10 hours of a day, an
/// alert an hour.
class FilledStore {
public:
    explicit FilledStore(int days)
    {
        MonitorEngine engine(machine.platform());
        engine.start();
        engine.stop();
        machine.endProcess();
        const Connection store = open(SQLITE_OPEN_READWRITE);
        fill(store, days * kSessionsADay, 86400.0 / kSessionsADay,
            "app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec) "
            "SELECT 'Application ' || (i * 7 % 30), 'org.example.application', t, t + 100.5, "
            "100.5");
        fill(store, days * 600, 144,
            "keystrokes (timestamp, app_name, input_method, keystroke_count) "
            "SELECT t, 'Application', CASE i % 2 WHEN 0 THEN 'english' ELSE 'quanpin' END, 90");
        fill(store, days * 24, 3600,
            "alerts (timestamp, alert_type, severity, message) SELECT t, 'cpu', 'warning', ''");
    }
    ~FilledStore() { fs::remove_all(directory); }

    FilledStore(const FilledStore&) = delete;
    FilledStore& operator=(const FilledStore&) = delete;

    Platform platform() { return machine.platform(); }

    Connection open(int flags) const
    {
        return openConnection(storePath(directory).string(), flags).connection;
    }

private:
    static fs::path makeDirectory()
    {
        std::string pattern = (fs::temp_directory_path() / "quillbrook-bench-XXXXXX").string();
        return ::mkdtemp(pattern.data());
    }

    static void fill(
        const Connection& store, int rows, double intervalSec, const std::string& target)
    {
        const std::string sql
            = filled("INSERT INTO {} FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                     "SELECT i + 1 FROM n WHERE i < {}) SELECT i, {} - ({} - i) * {} AS t FROM n)",
                {target, std::to_string(rows), shortestText(kNow), std::to_string(rows),
                    shortestText(intervalSec)});
        if (sqlite3_exec(store.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            fatal(sqlite3_errmsg(store.get()));
        }
    }

    fs::path directory = makeDirectory();
    VirtualMachine machine{directory, kNow};
};

/// One refresh of the menu bar, all on the main thread, on a store of so many days.
void menuBarRefresh(benchmark::State& state)
{
    FilledStore store(static_cast<int>(state.range(0)));
    MenuBarVM model(store.platform());
    for (auto _ : state) {
        model.refreshStats();
    }
    if (model.activeHoursStr.get() == "0h0m" || model.alertCount.get() == 0) {
        fatal("the refresh read nothing");
    }
}
BENCHMARK(menuBarRefresh)->Arg(1)->Arg(365)->Arg(3650)->Unit(benchmark::kMicrosecond);

/// The three statements as they stand, on the whole tables.
void menuBarStatementsBare(benchmark::State& state)
{
    const FilledStore store(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const Connection connection = store.open(SQLITE_OPEN_READONLY);
        for (const std::string& sql :
            {std::string(kActiveSecondsToday), std::string(kAlertsToday), tokensTodaySql()}) {
            const Statement statement = prepare(connection.get(), sql);
            sqlite3_step(statement.get());
        }
    }
}
BENCHMARK(menuBarStatementsBare)->Arg(365)->Arg(3650)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillbrook
