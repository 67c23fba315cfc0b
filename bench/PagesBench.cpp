#include "base/Text.h"
#include "bench/SeededStore.h"
#include "pages/kit/AccessibleViews.h"
#include "pages/kit/Look.h"
#include "platform/virtual/VirtualApplication.h"
#include "report/DataProvider.h"
#include "shell/DashboardWindowController.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

constexpr StoreSize kMonth{30, 200};
constexpr StoreSize kYear{365, 500};
constexpr StoreSize kTenYears{3650, 500};
constexpr StoreSize kCrowded{29, 200};

/// Adds as much as one day can bring to the long lists: a session and an idle period every ten
/// seconds of the last hour, and 10,000 alerts of one kind since midnight.
void crowd(const SeededStore& store)
{
    const Connection connection = store.open(SQLITE_OPEN_READWRITE);
    const std::string now = shortestText(SeededStore::kNow - 60);
    const std::string sql = filled(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 359) "
        "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
        "close_type) SELECT 'Application ' || (i % 30), 'org.example.a' || (i % 30), "
        "{} - i * 10, {} - i * 10 + 9, 9, 1 FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 359) "
        "INSERT INTO idle_periods (started_at, ended_at, duration_sec) "
        "SELECT {} - i * 10, {} - i * 10 + 5, 5 FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 9999) "
        "INSERT INTO alerts (timestamp, alert_type, severity, message) "
        "SELECT {} - i * 7, 'high_load', 'warning', 'load' FROM n",
        {now, now, now, now, now});
    if (sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        fatal(sqlite3_errmsg(connection.get()));
    }
}

/// The dashboard over a store.
class Desk {
public:
    explicit Desk(StoreSize size) : store(SeededStore::ofSize(size)) {}

    void open()
    {
        dashboard.show();
        settle();
    }

    void goTo(NavTab tab)
    {
        dashboard.show(tab);
        settle();
    }

    void pick(AlertsPeriod period) { dashboard.provider()->alertsPeriod.set(period); }

    SeededStore& store;

private:
    /// Runs until the data is published and painted.
    void settle()
    {
        store.machine().runFor(0);
        QApplication::processEvents();
    }

    VirtualApplication application{};
    DashboardWindowController dashboard{store.platform(), application, [](std::string_view) {}};
};

/// The one application object of the program, off screen.
void startQt()
{
    static int count = 1;
    static char name[] = "pages_bench";
    static char* values[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never destroyed: at the process's end Qt's own statics go before it.
    static const auto* application = new QApplication(count, values);
    benchmark::DoNotOptimize(application);
    installAccessibleViews();
    Look::apply(false, std::nullopt);
}

double millisecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken
        = std::chrono::steady_clock::now() - start;
    return taken.count();
}

double middleOf(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// From `show` to the first painted frame with data, the window made anew each time.
void showDashboard(benchmark::State& state)
{
    startQt();
    SeededStore::ofSize(kYear);
    for (auto _ : state) {
        Desk desk(kYear);
        state.SetIterationTime(millisecondsOf([&desk] { desk.open(); }) / 1000);
    }
}

/// From the selection of a page to its painted data, coming from a page without data, in turn with
/// the page's queries alone. `first_ms` is the first switch, which makes the page; `switch_ms` and
/// `queries_ms` are the middle ones of the others, and `own_ms` is the difference.
void switchPage(benchmark::State& state, StoreSize size, const RefreshContext& context)
{
    startQt();
    Desk desk(size);
    desk.open();
    desk.pick(context.alertsPeriod);
    const NavTab tab = context.tab;
    desk.goTo(NavTab::about);
    state.counters["first_ms"] = millisecondsOf([&desk, tab] { desk.goTo(tab); });
    std::vector<double> switches;
    std::vector<double> queries;
    for (auto _ : state) {
        desk.goTo(NavTab::about);
        switches.push_back(millisecondsOf([&desk, tab] { desk.goTo(tab); }));
        queries.push_back(millisecondsOf([&desk, &context] {
            benchmark::DoNotOptimize(
                performRefreshSync(desk.store.platform(), desk.store.path(), context));
        }));
        state.SetIterationTime(switches.back() / 1000);
    }
    state.counters["switch_ms"] = middleOf(switches);
    state.counters["queries_ms"] = middleOf(queries);
    state.counters["own_ms"] = middleOf(switches) - middleOf(queries);
}

struct PageCase {
    std::string_view name;
    RefreshContext context;
};

const std::vector<PageCase> kPages = {
    {"Today", {.tab = NavTab::today}},
    {"Past", {.tab = NavTab::history}},
    {"Habit", {.tab = NavTab::habit}},
    {"Tokens", {.tab = NavTab::keylog}},
    {"Focus", {.tab = NavTab::focus}},
    {"Sessions", {.tab = NavTab::session}},
    {"Idles", {.tab = NavTab::idles}},
    {"Alerts", {.tab = NavTab::alerts}},
    {"AllAlerts", {.tab = NavTab::alerts, .alertsPeriod = AlertsPeriod::all}},
    {"Future", {.tab = NavTab::life}},
};

/// The long lists at their longest.
const std::vector<PageCase> kLongLists = {
    {"Sessions", {.tab = NavTab::session}},
    {"Idles", {.tab = NavTab::idles}},
    {"Alerts", {.tab = NavTab::alerts}},
};

void switchCrowded(benchmark::State& state, const RefreshContext& context)
{
    static bool isCrowded = false;
    SeededStore& store = SeededStore::ofSize(kCrowded);
    if (!std::exchange(isCrowded, true)) {
        crowd(store);
    }
    switchPage(state, kCrowded, context);
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
    for (const PageCase& page : kPages) {
        add("switchPage/month/" + std::string(page.name), 50, switchPage, kMonth, page.context);
    }
    add("showDashboard", 20, showDashboard);
    for (const PageCase& page : kPages) {
        add("switchPage/tenYears/" + std::string(page.name), 10, switchPage, kTenYears,
            page.context);
    }
    for (const PageCase& page : kLongLists) {
        add("switchPage/crowded/" + std::string(page.name), 20, switchCrowded, page.context);
    }
    return true;
}

[[maybe_unused]] const bool kIsAdded = addAll();

} // namespace
} // namespace quillbrook
