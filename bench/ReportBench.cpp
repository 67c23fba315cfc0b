#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "bench/SeededStore.h"
#include "categories/AppCategoryList.h"
#include "categories/CategoryStore.h"
#include "report/CategoryReports.h"
#include "report/DataProvider.h"
#include "report/SessionReports.h"
#include "report/StoreQuery.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {
namespace {

std::vector<std::string>& tracedStatements()
{
    static std::vector<std::string> statements;
    return statements;
}

int traceStatement(unsigned, void*, void*, void* text)
{
    const std::string_view sql = static_cast<const char*>(text);
    // SQLite's own reading of the schema happens by itself on every connection.
    if (!sql.starts_with("--") && sql.find("sqlite_master") == std::string_view::npos) {
        tracedStatements().emplace_back(sql);
    }
    return 0;
}

extern "C" int traceConnection(sqlite3* db, char**, const sqlite3_api_routines*)
{
    return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, traceStatement, nullptr);
}

/// The statements that `work` runs, whatever connection it opens for them, in their order.
std::vector<std::string> statementsOf(const std::function<void()>& work)
{
    const auto entry = reinterpret_cast<void (*)()>(traceConnection);
    tracedStatements().clear();
    sqlite3_auto_extension(entry);
    work();
    sqlite3_cancel_auto_extension(entry);
    if (tracedStatements().empty()) {
        fatal("nothing was read");
    }
    return tracedStatements();
}

/// Fetches each value of the present row in its own type.
void fetchValues(const Statement& statement)
{
    for (int i = sqlite3_data_count(statement.get()) - 1; i >= 0; --i) {
        switch (sqlite3_column_type(statement.get(), i)) {
        case SQLITE_INTEGER:
            benchmark::DoNotOptimize(sqlite3_column_int64(statement.get(), i));
            break;
        case SQLITE_FLOAT:
            benchmark::DoNotOptimize(sqlite3_column_double(statement.get(), i));
            break;
        case SQLITE_TEXT:
            benchmark::DoNotOptimize(sqlite3_column_text(statement.get(), i));
            break;
        default:
            break;
        }
    }
}

enum class Rows : std::uint8_t { stepped, fetched };

/// Runs statements through SQLite alone.
void runBare(const SeededStore& store, const std::vector<std::string>& statements, Rows rows)
{
    const Connection connection = store.open(kReaderFlags);
    for (const std::string& sql : statements) {
        const Statement statement = prepare(connection.get(), sql);
        int result = sqlite3_step(statement.get());
        while (result == SQLITE_ROW) {
            if (rows == Rows::fetched) {
                fetchValues(statement);
            }
            result = sqlite3_step(statement.get());
        }
        if (result != SQLITE_DONE) {
            fatal(sqlite3_errmsg(connection.get()));
        }
    }
}

double secondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Measures `work` in turn with the bare statements that it runs, so that all meet the same
/// machine. The figures are of the fastest run of each: `stepped_ms` has the statements stepped
/// through, `fetched_ms` their values fetched too, and `ratio` compares with the former,
/// `fetched_ratio` with the latter.
void compare(benchmark::State& state, const SeededStore& store, const std::function<void()>& work)
{
    const std::vector<std::string> statements = statementsOf(work);
    double least = std::numeric_limits<double>::infinity();
    double stepped = least;
    double fetched = least;
    for (auto _ : state) {
        stepped = std::min(stepped, secondsOf([&] { runBare(store, statements, Rows::stepped); }));
        fetched = std::min(fetched, secondsOf([&] { runBare(store, statements, Rows::fetched); }));
        const double seconds = secondsOf(work);
        least = std::min(least, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["least_ms"] = least * 1000;
    state.counters["stepped_ms"] = stepped * 1000;
    state.counters["fetched_ms"] = fetched * 1000;
    state.counters["ratio"] = least / stepped;
    state.counters["fetched_ratio"] = least / fetched;
}

void refresh(benchmark::State& state, StoreSize size, const RefreshContext& context)
{
    SeededStore& store = SeededStore::ofSize(size);
    compare(state, store, [&store, &context] {
        benchmark::DoNotOptimize(performRefreshSync(store.platform(), store.path(), context));
    });
}

/// The trend that follows the Habit page.
void trend(benchmark::State& state, StoreSize size)
{
    SeededStore& store = SeededStore::ofSize(size);
    compare(state, store, [&store] {
        const Connection connection = store.open(kReaderFlags);
        benchmark::DoNotOptimize(computeTrend(
            connection.get(), CategoryStore::loadRuleSet(connection.get()), SeededStore::kNow));
    });
}

/// The list of all applications, under which the window stands still meanwhile.
void appCategoryList(benchmark::State& state, StoreSize size)
{
    SeededStore& store = SeededStore::ofSize(size);
    compare(state, store, [&store] {
        AppCategoryList list(store.platform());
        list.loadData();
        benchmark::DoNotOptimize(list.apps().size());
    });
}

/// The daily averages' statement as it stands, without the narrowed history.
void dailyAveragesOfAllHistory(benchmark::State& state, StoreSize size)
{
    const SeededStore& store = SeededStore::ofSize(size);
    for (auto _ : state) {
        state.SetIterationTime(secondsOf(
            [&store] { runBare(store, {std::string(kDailyAvgSessionsSql)}, Rows::stepped); }));
    }
}

struct PageCase {
    std::string_view name;
    RefreshContext context;
    int iterations = 20;
};

const std::vector<PageCase>& pageCases()
{
    static const std::vector<PageCase> cases = {
        {"Today/today", {.tab = NavTab::today}},
        {"Past/today", {.tab = NavTab::history}},
        {"Past/month", {.tab = NavTab::history, .historyPeriod = HistoryPeriod::month}},
        {"Past/year", {.tab = NavTab::history, .historyPeriod = HistoryPeriod::year}, 3},
        {"Past/all", {.tab = NavTab::history, .historyPeriod = HistoryPeriod::all}, 3},
        {"Habit/today", {.tab = NavTab::habit}},
        {"Habit/month", {.tab = NavTab::habit, .habitPeriod = HabitPeriod::month}},
        {"Tokens/today", {.tab = NavTab::keylog}},
        {"Tokens/month", {.tab = NavTab::keylog, .keylogPeriod = KeylogPeriod::month}},
        {"Alerts/week", {.tab = NavTab::alerts}},
        {"Alerts/all", {.tab = NavTab::alerts, .alertsPeriod = AlertsPeriod::all}},
        {"Sessions/today", {.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}},
        {"Idles/hour", {.tab = NavTab::idles, .idlesPeriod = IdlesPeriod::hour1}},
        {"Idles/today", {.tab = NavTab::idles}},
        {"Focus/today", {.tab = NavTab::focus}},
        {"Focus/month", {.tab = NavTab::focus, .focusPeriod = FocusPeriod::month}},
        {"Focus/all", {.tab = NavTab::focus, .focusPeriod = FocusPeriod::all}, 3},
    };
    return cases;
}

template <typename... Arguments>
void add(const std::string& name, int iterations, Arguments&&... arguments)
{
    benchmark::RegisterBenchmark(name.c_str(), std::forward<Arguments>(arguments)...)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(iterations)
        ->UseManualTime();
}

/// Store by store, as only one is kept at a time.
bool addAll()
{
    for (const int years : {1, 5, 10}) {
        for (const int sessionsADay : {200, 500}) {
            const StoreSize size{365 * years, sessionsADay};
            const std::string place
                = std::to_string(years) + "y/" + std::to_string(sessionsADay) + "/";
            for (const PageCase& page : pageCases()) {
                add(place + std::string(page.name), page.iterations, refresh, size, page.context);
            }
            add(place + "trend", 20, trend, size);
            add(place + "appCategoryList", 5, appCategoryList, size);
            add(place + "dailyAveragesOfAllHistory", 3, dailyAveragesOfAllHistory, size);
        }
    }
    return true;
}

[[maybe_unused]] const bool kIsAdded = addAll();

} // namespace
} // namespace quillbrook
