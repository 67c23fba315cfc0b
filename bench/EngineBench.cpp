#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "engine/SystemSampler.h"
#include "platform/virtual/VirtualMachine.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

constexpr double kStart = 1767225600; // 2026-01-01T00:00:00Z
constexpr int kSessionsADay = 500;

/// A running engine with a person at work, in a directory of its own.
class Workplace {
public:
    Workplace()
    {
        std::string pattern = (fs::temp_directory_path() / "quillbrook-bench-XXXXXX").string();
        directory = ::mkdtemp(pattern.data());
        machine = std::make_unique<VirtualMachine>(directory, kStart);
    }
    ~Workplace()
    {
        engine.reset();
        machine.reset();
        fs::remove_all(directory);
    }

    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    void start()
    {
        engine = std::make_unique<MonitorEngine>(machine->platform());
        engine->start();
    }

    /// Ends the engine without a word to the store.
    void crash()
    {
        engine.reset();
        machine->endProcess();
    }

    void startWorking()
    {
        machine->bringToFront("Editor", "org.example.Editor");
        start();
        machine->runFor(59);
        machine->humanInput.happenNow();
        machine->runFor(1);
    }

    Connection openStore() const
    {
        auto opened = openConnection(storePath(directory).string(), SQLITE_OPEN_READWRITE);
        if (opened.result != SQLITE_OK) {
            fatal("the store can't be opened");
        }
        return std::move(opened.connection);
    }

    fs::path directory{};
    std::unique_ptr<VirtualMachine> machine{};
    std::unique_ptr<MonitorEngine> engine{};
};

void run(const Connection& store, const std::string& sql)
{
    if (sqlite3_exec(store.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        fatal(sqlite3_errmsg(store.get()));
    }
}

/// Fills the store with sessions that follow each other up to `kStart`.
void fillStore(const Connection& store, int days)
{
    run(store,
        filled("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < {}) "
               "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, "
               "duration_sec, close_type) SELECT 'Application ' || (i * 7 % 30), "
               "'org.example.application' || (i * 7 % 30), {} + i * 172.8 + 0.123, "
               "{} + i * 172.8 + 100.623, 100.5, 1 FROM n",
            {std::to_string(days * kSessionsADay), shortestText(kStart - days * 86400.0),
                shortestText(kStart - days * 86400.0)}));
}

/// A second of the machine in which nothing happens: the attention's tick, and in each sixtieth the
/// minute's work. The virtual machine's own work is in the figure.
void attentionTick(benchmark::State& state)
{
    Workplace workplace;
    workplace.startWorking();
    for (auto _ : state) {
        workplace.machine->humanInput.happenNow();
        workplace.machine->runFor(1);
    }
}
BENCHMARK(attentionTick);

/// A switch from one application to another: the session before is closed, the next one opened. A
/// front counts once it has stood for some seconds, so that four idle ticks are in the figure.
void applicationSwitch(benchmark::State& state)
{
    Workplace workplace;
    workplace.startWorking();
    bool isOther = false;
    for (auto _ : state) {
        isOther = !isOther;
        workplace.machine->humanInput.happenNow();
        workplace.machine->bringToFront(isOther ? "Terminal" : "Editor",
            isOther ? "org.example.Terminal" : "org.example.Editor");
        workplace.machine->runFor(5);
    }
    // Proves that each round switched.
    const Connection store = workplace.openStore();
    const Statement count = prepare(store.get(), "SELECT COUNT(*) FROM app_sessions");
    sqlite3_step(count.get());
    state.counters["switches"]
        = benchmark::Counter(static_cast<double>(sqlite3_column_int64(count.get(), 0) - 1),
            benchmark::Counter::kAvgIterations);
}
BENCHMARK(applicationSwitch);

/// The statements of a switch on an equal store, run bare.
void applicationSwitchBare(benchmark::State& state)
{
    Workplace workplace;
    workplace.start();
    workplace.crash();
    const Connection store = workplace.openStore();
    run(store, "PRAGMA synchronous=NORMAL");
    double now = kStart;
    for (auto _ : state) {
        now += 1;
        const std::string time = shortestText(now);
        run(store, "BEGIN");
        run(store,
            filled("UPDATE app_sessions SET ended_at = {}, duration_sec = {} - started_at "
                   "WHERE id = {} AND ended_at IS NULL",
                {time, time, std::to_string(sqlite3_last_insert_rowid(store.get()))}));
        run(store,
            filled("INSERT INTO app_sessions (app_name, bundle_id, started_at, close_type) "
                   "VALUES ('Terminal', 'org.example.Terminal', {}, 1)",
                {time}));
        run(store, "COMMIT");
    }
}
BENCHMARK(applicationSwitchBare);

/// One key, from the platform's handler to the count. The virtual keyboard is in the figure.
void countedKey(benchmark::State& state)
{
    Workplace workplace;
    workplace.startWorking();
    for (auto _ : state) {
        workplace.machine->keyCounting.press(1);
    }
}
BENCHMARK(countedKey);

/// A minute at work with so many keys: beside the one without any, the flush's row is in the
/// figure.
void minute(benchmark::State& state)
{
    Workplace workplace;
    workplace.startWorking();
    for (auto _ : state) {
        workplace.machine->humanInput.happenNow();
        workplace.machine->keyCounting.press(state.range(0));
        workplace.machine->runFor(60);
    }
    // Proves that each round flushed, or none.
    const Connection store = workplace.openStore();
    const Statement count = prepare(store.get(), "SELECT COUNT(*) FROM keystrokes");
    sqlite3_step(count.get());
    state.counters["flushes"]
        = benchmark::Counter(static_cast<double>(sqlite3_column_int64(count.get(), 0)),
            benchmark::Counter::kAvgIterations);
}
BENCHMARK(minute)->Arg(0)->Arg(1)->Arg(1200);

/// A sample of the machine's load, without what a real machine takes to tell it.
void sample(benchmark::State& state)
{
    const Workplace workplace;
    SystemSampler sampler(workplace.machine->platform());
    for (auto _ : state) {
        benchmark::DoNotOptimize(sampler.sample());
    }
}
BENCHMARK(sample);

/// The engine's start on a store of so many days.
void start(benchmark::State& state)
{
    Workplace workplace;
    workplace.start();
    workplace.crash();
    fillStore(workplace.openStore(), static_cast<int>(state.range(0)));
    for (auto _ : state) {
        workplace.start();
        state.PauseTiming();
        workplace.crash();
        state.ResumeTiming();
    }
}
BENCHMARK(start)->Arg(0)->Arg(365)->Arg(1825)->Arg(3650)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillbrook
